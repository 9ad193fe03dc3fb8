#include "projectfile/model_file.h"

#include "projectfile/project_case.h"
#include "support/source_directory.h"

#include <filesystem>
#include <sstream>
#include <vector>

namespace keldrin {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::string_view ModelLabels =
    "Station,RxStn,TxStn,East,North,Zinv,ResInv,Res0,Rerr0,dzW,Rerr,Rsns\n";

/// A project of three soundings at 100, 150 and 200, with their elevations.
class ModelFile : public ProjectCase {
  protected:
    ModelFile() { loadProject("SurveyType='In-Loop'"); }

    void loadProject(std::string_view assignments) {
        EXPECT_EQ(
            readTable("100 1 2 50 1 1 5 3\n150 1 2 60 1 1 5 3\n200 1 2 70 1 1 5 3\n", assignments),
            0);
    }

    int readModels(std::string_view content) {
        for (SoundingRecord &record : model.hTrn) {
            record.NumLayer = 0;
        }
        putFile(modelPath, content);
        messages.errors.clear();
        messages.infos.clear();
        return M1D_File_Read(model, modelPath);
    }

    std::string writtenModels() {
        static_cast<void>(M1D_File_Write(model, modelPath));
        return fileContent(modelPath);
    }

    [[nodiscard]] std::vector<int> layerCounts() const {
        std::vector<int> counts(static_cast<std::size_t>(model.SoundingCount));
        for (std::size_t i = 0; i < counts.size(); ++i) {
            counts[i] = sounding(i).NumLayer;
        }
        return counts;
    }

    std::string modelPath = directory.path("line.m1d");
};

/// A block of plain numbers: the surface and `layers` layers of 2 m.
std::string block(int station, int layers, double surface = 50.0) {
    std::ostringstream text;
    for (int i = 0; i <= layers; ++i) {
        text << station << ',' << station << ',' << station << ",1,2,"
             << (i == 0 ? surface : surface - 2.0 * i + 1.0) << ',' << 10 + i << ",100,500,1,5,1\n";
    }
    return text.str();
}

TEST_F(ModelFile, TheExampleComesBackAsItWas) {
    const std::string examples = std::string(SourceDirectory) + "/examples/project/inloop";
    std::string project = examples + ".std";
    ASSERT_EQ(STD_File_Read(model, project), 0);
    ASSERT_EQ(M1D_File_Read(model, examples + ".m1d"), 0);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_THAT(messages.infos, Contains("24 layered-models read from inloop.m1d"));
    EXPECT_THAT(layerCounts(), testing::Each(22));
    EXPECT_NEAR(sounding(0).ThkInv[0], 4.218F, 1E-3F);
    EXPECT_NEAR(sounding(0).ZMid[1], -6.592F, 1E-3F);
    EXPECT_EQ(sounding(0).ResInv[0], 12.0F);
    EXPECT_EQ(sounding(0).Rerr[1], 11.14F);
    EXPECT_EQ(writtenModels(), fileContent(examples + ".m1d"));
}

TEST_F(ModelFile, ThinLayersFarAboveTheSeaKeepTheirThickness) {
    SoundingRecord &record = model.hTrn[0];
    record.Elevation = 3456.789;
    record.NumLayer = MaxLayers;
    for (std::size_t i = 0; i < MaxLayers; ++i) {
        record.ThkInv[i] = 0.4F + 0.3F * static_cast<float>(i);
        record.ResInv[i] = 100.0F;
    }
    const LayerReals thicknesses = record.ThkInv;
    ASSERT_EQ(readModels(writtenModels()), 0);
    EXPECT_EQ(record.NumLayer, MaxLayers);
    for (std::size_t i = 0; i < MaxLayers; ++i) {
        EXPECT_NEAR(record.ThkInv[i], thicknesses[i], 0.05F) << "layer " << i;
    }
    const std::string second = writtenModels();
    ASSERT_EQ(readModels(second), 0);
    EXPECT_EQ(writtenModels(), second);
}

TEST_F(ModelFile, ColumnsAreFoundByLabelsAndMissingOnesHaveDefaults) {
    ASSERT_EQ(readModels("Rerr,ResInv(ohm-m),note,ZINV,station\n"
                         "9,1,x,50,100\n9,20,x,49,100\n*,30,x,47,100\n"),
              0);
    const SoundingRecord &record = sounding(0);
    EXPECT_EQ(record.NumLayer, 2);
    EXPECT_THAT(record.ThkInv, testing::Contains(2.0F).Times(2));
    EXPECT_EQ(record.ZMid[1], -3.0F);
    EXPECT_EQ(record.ResInv[0], 20.0F) << "the surface's own resistivity is nobody's";
    EXPECT_EQ(record.Res0[1], 30.0F) << "from ResInv";
    EXPECT_EQ(record.Rerr0[0], 500.0F) << "not the 100 of a cleared record, not Rerr";
    EXPECT_EQ(record.dzW[0], 1.0F);
    EXPECT_EQ(record.Rerr[0], 9.0F);
    EXPECT_EQ(record.Rerr[1], 500.0F) << "from Rerr0";
    EXPECT_EQ(record.Rsns[0], 0.0F);
}

TEST_F(ModelFile, ValuesAreLimitedInTheirOrder) {
    const std::string surface = "100,100,100,1,2,50,10,100,500,1,5,1\n";
    ASSERT_EQ(readModels(surface + "100,100,100,1,2,49,0,*,20000,0,*,-1\n"
                                   "100,100,100,1,2,-1e9,1E9,-1e33,0,200,0,200\n"),
              0);
    const SoundingRecord &record = sounding(0);
    EXPECT_EQ(record.ResInv[0], 1.0E-4F);
    EXPECT_EQ(record.Res0[0], 1.0E-4F) << "from the limited ResInv";
    EXPECT_EQ(record.Rerr0[0], 9999.9F);
    EXPECT_EQ(record.dzW[0], 0.01F);
    EXPECT_EQ(record.Rerr[0], 9999.9F) << "from the limited Rerr0";
    EXPECT_EQ(record.Rsns[0], 0.0F);
    EXPECT_EQ(record.ThkInv[1], 99999.9F);
    EXPECT_EQ(record.ResInv[1], 1.0E6F);
    EXPECT_EQ(record.Res0[1], 1.0E6F) << "a value below the missing one is none";
    EXPECT_EQ(record.Rerr0[1], 0.1F);
    EXPECT_EQ(record.dzW[1], 100.0F);
    EXPECT_EQ(record.Rerr[1], 0.1F);
    EXPECT_EQ(record.Rsns[1], 100.0F);
}

TEST_F(ModelFile, DepthsThatGoUpwardGiveThinLayersBelowEachOther) {
    ASSERT_EQ(readModels("100,100,100,1,2,50,10\n100,100,100,1,2,60,10\n100,100,100,1,2,48,10\n"),
              0);
    EXPECT_EQ(sounding(0).ThkInv[0], 0.1F);
    EXPECT_EQ(sounding(0).ZMid[0], -10.0F) << "a magnitude, downward";
    EXPECT_NEAR(sounding(0).ThkInv[1], 3.8F, 1E-5F) << "from a base of 49.9";
}

TEST_F(ModelFile, BlocksFindTheirSoundings) {
    const struct {
        std::string_view what;
        std::string content;
        std::vector<int> layers;
        int models;
    } cases[] = {
        {"another order", block(200, 3) + block(100, 1) + block(150, 2), {1, 2, 3}, 3},
        {"another line", block(1000, 2) + block(1050, 2), {0, 0, 0}, 2},
        {"one that is nobody's", block(100, 1) + block(125, 5) + block(150, 2), {1, 2, 0}, 3},
        {"the same stations again", block(100, 2) + block(100, 2), {5, 0, 0}, 1},
        {"the same after another", block(100, 3) + block(150, 1) + block(100, 1), {1, 1, 0}, 3},
        {"60 layers", block(100, 60) + block(150, 60), {48, 48, 0}, 2},
        {"within the tolerance",
         "100.001,100,99.999,1,2,50,9\n100,100,100,1,2,49,9\n",
         {1, 0, 0},
         1},
        {"beyond it", "100.0011,100,100,1,2,50,9\n100.0011,100,100,1,2,49,9\n", {0, 0, 0}, 1},
        {"surfaces alone", block(100, 0) + block(150, 0), {0, 0, 0}, 2},
        {"nothing", "", {0, 0, 0}, 0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(readModels(c.content), 0) << c.what;
        EXPECT_EQ(layerCounts(), c.layers) << c.what;
        EXPECT_THAT(messages.infos,
                    Contains(std::to_string(c.models) + " layered-models read from line.m1d"))
            << c.what;
        EXPECT_THAT(messages.errors, IsEmpty()) << c.what;
    }
}

TEST_F(ModelFile, TheLargestCountOfLayersIsTheModels) {
    EXPECT_EQ(model.ModelLayerCount, 2);
    ASSERT_EQ(readModels(block(150, 30) + block(100, 4)), 0);
    EXPECT_EQ(model.ModelLayerCount, 30);
    ASSERT_EQ(readModels(block(150, 2)), 0);
    EXPECT_EQ(sounding(1).NumLayer, 2);
    EXPECT_EQ(sounding(1).ResInv[29], 40.0F) << "what a shorter block does not reach stays";
    EXPECT_EQ(model.ModelLayerCount, 30);
}

TEST_F(ModelFile, TheTransmitterDependsOnTheArray) {
    const std::string withColumn =
        "Station,RxStn,TxStn,Zinv,ResInv\n100,100,7,50,9\n100,100,7,49,9\n"
        "150,150,*,50,9\n150,150,*,49,9\n";
    const std::string without = "Station,RxStn,Zinv,ResInv\n100,100,50,9\n100,100,49,9\n";
    EXPECT_EQ(readModels(withColumn), 0);
    EXPECT_EQ(layerCounts(), std::vector({1, 1, 0})) << "in its loop, whatever the column says";
    loadProject("SurveyType='Moving-Loop'");
    EXPECT_EQ(readModels(withColumn), 0);
    EXPECT_EQ(layerCounts(), std::vector({0, 0, 0})) << "a missing cell matches nothing";
    EXPECT_EQ(readModels(without), 0);
    EXPECT_EQ(layerCounts(), std::vector({1, 0, 0})) << "from RxStn";
    loadProject("SurveyType='Fixed-Loop' TxStn=7");
    EXPECT_EQ(readModels(withColumn), 0);
    EXPECT_EQ(layerCounts(), std::vector({1, 0, 0}));
    EXPECT_EQ(readModels(without), 0);
    EXPECT_EQ(layerCounts(), std::vector({0, 0, 0})) << "1, not the selected transmitter";
    loadProject("SurveyType='Fixed-Loop' TxStn=1");
    EXPECT_EQ(readModels(without), 0);
    EXPECT_EQ(layerCounts(), std::vector({1, 0, 0}));
}

TEST_F(ModelFile, RowsAndCellsThatCannotBeUsed) {
    ASSERT_EQ(readModels("*,100,100,1,2,50,9\n100,*,100,x,2y,50,9\n100,100,100,1,2,*,9\n"
                         "100,100,100,1,2,49,*\n100,100,100,1,2,inf,9\n100,100,100,1,2,49,9\n"),
              0);
    EXPECT_THAT(messages.errors, IsEmpty()) << "East and North are not read";
    EXPECT_EQ(layerCounts(), std::vector({1, 0, 0}));
    ASSERT_EQ(readModels(block(100, 0) + "100,100,100,1,2,49,9,100,5x\n100,100,100,1,2,47,9z\n"),
              0);
    EXPECT_EQ(layerCounts(), std::vector({1, 0, 0}));
    EXPECT_EQ(sounding(0).Rerr0[0], 500.0F);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR reading real*4 RERR0 value from 5x|Record number 2|"
                            "100,100,100,1,2,49,9,100,5x",
                            "ERROR reading real*4 RESINV value from 9z|Record number 3|"
                            "100,100,100,1,2,47,9z"));
}

TEST_F(ModelFile, BadLabelsSilenceTheRowsUntilGoodOnes) {
    ASSERT_EQ(readModels("\xEF\xBB\xBF\"note\"\r\nStation,Zinv\r\n" + block(100, 1) +
                         std::string(ModelLabels) + block(150, 1) + "\x1Amore"),
              0);
    EXPECT_EQ(layerCounts(), std::vector({0, 1, 0}));
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR: Missing expected column labels in line 2|Station,Zinv",
                            HasSubstr("end mark")));
    EXPECT_THAT(messages.infos, Contains("1 layered-models read from line.m1d"));
}

TEST_F(ModelFile, WithoutSoundingsOrWithoutAFile) {
    EXPECT_EQ(M1D_File_Read(model, directory.path("none.m1d")), 2);
    std::filesystem::create_directory(directory.path("folder.m1d"));
    messages.infos.clear();
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_EQ(M1D_File_Read(model, directory.path("folder.m1d")), 2);
    EXPECT_EQ(messages.errors.size(), 1U) << "a file that cannot be read is told";
    model.SoundingCount = 0;
    EXPECT_EQ(readModels(block(100, 2)), 1);
    EXPECT_EQ(sounding(0).NumLayer, 0);
    EXPECT_THAT(messages.infos, IsEmpty());
}

TEST_F(ModelFile, TheFirstRowOfASoundingIsItsSurface) {
    ASSERT_EQ(readModels(block(100, 2) + block(200, 0)), 0);
    model.hTrn[1].East = MissingValue;
    EXPECT_EQ(writtenModels(), std::string(ModelLabels) +
                                   "\"From KELDRIN v4.00i  Date:14/05/2021  Time:09:30:00\"\n"
                                   "100,100,100,1,2,50,1.1000E+1,1.0000E+2,500,1,5,1\n"
                                   "100,100,100,1,2,49,1.1000E+1,1.0000E+2,500,1,5,1\n"
                                   "100,100,100,1,2,47,1.2000E+1,1.0000E+2,500,1,5,1\n"
                                   "150,150,150,*,2,60,*,*,100,1,100,0\n"
                                   "200,200,200,1,2,70,*,*,100,1,100,0\n");
}

TEST_F(ModelFile, OtherTransmittersAreLeftOut) {
    ASSERT_EQ(readModels(block(100, 1) + block(150, 1) + block(200, 1)), 0);
    setSurveyType(model.control, FixedLoop);
    model.control.TxStn = 150.001;
    const std::string content = writtenModels();
    EXPECT_THAT(content, HasSubstr("\n150,"));
    EXPECT_THAT(content, Not(HasSubstr("\n100,")));
    EXPECT_THAT(content, Not(HasSubstr("\n200,")));
}

TEST_F(ModelFile, AWriteWithoutALayerKeepsTheOldModels) {
    const std::string foreign = block(1000, 3);
    ASSERT_EQ(readModels(foreign), 0);
    const std::string surfaces = writtenModels();
    EXPECT_EQ(fileContent(modelPath + "~"), foreign);
    EXPECT_EQ(writtenModels(), surfaces);
    EXPECT_EQ(fileContent(modelPath + "~"), foreign) << "surfaces alone are not worth keeping";
    const std::string mislabelled = "Station,Resistivity\n" + foreign;
    putFile(modelPath, mislabelled);
    writtenModels();
    EXPECT_EQ(fileContent(modelPath + "~"), mislabelled);
    ASSERT_EQ(readModels(block(100, 1)), 0);
    writtenModels();
    EXPECT_EQ(fileContent(modelPath + "~"), mislabelled) << "models over models need no copy";
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(ModelFile, AFailedWriteIsToldAndChangesNothing) {
    const std::string nowhere = directory.path("missing/line.m1d");
    EXPECT_FALSE(M1D_File_Write(model, nowhere).written);
    EXPECT_THAT(messages.errors,
                ElementsAre(testing::StartsWith("ERROR while writing KELDRIN file|" + nowhere)));
}

} // namespace
} // namespace keldrin
