#include "projectfile/data_columns.h"
#include "projectfile/project_case.h"
#include "support/source_directory.h"

#include <algorithm>
#include <filesystem>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace keldrin {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

/// A model with something in every value that a project file holds.
SurveyModel fullModel() {
    SurveyModel model;
    STD_Init_Namelist(model);
    ControlValues &control = model.control;
    control.Header[1] = "It's \"the\" line";
    control.Header[3] = "Data from 'x.avg', y";
    control.JobName = "Smith \"Bob\", Ltd";
    control.JobFor = "O'Brien";
    control.JobArea = "a, b/c ! d";
    control.LineNumber = -0.5F;
    control.LineAzimuth = 86.5F;
    control.TxAzimuth = -12.5F;
    control.StnScale = 0.3048F;
    control.XTxCenter = 402000.25;
    control.YRxOffset = -0.04F;
    control.RxArea = 12345.0F;
    control.TxFreq = 33.3333F;
    control.NumLayer = 3;
    control.Res0Layer = {100.0F, 0.05F, 12345.6F};
    control.Res0Error = {50.0F, 500.0F, 12.345F};
    control.Thk0Layer = {10.5F, 20.0F};
    setTEMUnits(control, NanovoltPerAmpereSquareMetre);
    STD_Check_TxWaveform(control);
    static_cast<void>(STD_Allocate_hTrn(model, 20));
    model.SoundingCount = 2;
    for (std::size_t i = 0; i < 2; ++i) {
        SoundingRecord &record = model.hTrn[i];
        record.Station = 100.0 + 0.0625 * static_cast<double>(i);
        record.East = 402048.5074;
        record.North = -0.0001;
        record.RxStn = record.Station;
        record.TxStn = record.Station - 1.5;
        record.NumTW = 3;
        record.TWcenter = {0.0312345F, 0.999951F, 9999.6F};
        record.TWwidth = {0.007F, 0.3F, 1.0E-6F};
        record.TEMobs = {5.99848E4F, -1.0E-9F, 0.0F};
        record.TEMerr = {3.386F, 1126.056F, 0.01F};
        record.TEMcalc = {MissingValue, 1.0E20F, -0.0F};
        record.TEMwgt = {{{1.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.7F}, {}}};
        record.AResObs = {0.0F, 25.06F, MissingValue};
        record.AResCalc = {1.0E5F, -3.0F, 0.001F};
    }
    return model;
}

// A cell of asterisks is no number for a reader; the stars of texts and of missing values are.
TEST_F(ProjectCase, NumbersThatDoNotFitTheirColumnsAreTold) {
    model = fullModel();
    model.control.JobName = "**bold**";
    model.control.LineAzimuth = MissingValue;
    written();
    EXPECT_THAT(messages.warnings, IsEmpty());
    model.hTrn[0].East = 1.0E12;        // in each of three rows
    model.hTrn[1].TWwidth[2] = 1.0E20F; // before another such cell
    model.hTrn[1].TEMobs[2] = 1.0E30F;
    written();
    EXPECT_THAT(messages.warnings,
                ElementsAre(StartsWith("WARNING: 4 numbers do not fit their columns in line.std")));
}

class ProjectFile : public ProjectCase {
  protected:
    /// Reads what is at the path into another model and writes it again.
    std::string rewritten() {
        SurveyModel other;
        EXPECT_EQ(STD_File_Read(other, path), 0);
        static_cast<void>(STD_File_Write(other, path));
        return fileContent(path);
    }
};

TEST_F(ProjectFile, TextsThatTheirQuoteWouldEndAreWrittenInTheOther) {
    model = fullModel();
    model.control.JobName = "the \"old\"  ! line";
    model.control.JobArea = "north of \"Tarn\" /";
    model.control.JobBy = "a \" TxFreq=3";
    model.control.Header[1] = "it's 'new' ! today";
    EXPECT_THAT(written(), testing::HasSubstr("JobName='the \"old\"  ! line'\n"));
    SurveyModel again;
    ASSERT_EQ(STD_File_Read(again, path), 0);
    EXPECT_EQ(again.control.JobName, model.control.JobName);
    EXPECT_EQ(again.control.JobArea, model.control.JobArea);
    EXPECT_EQ(again.control.JobBy, model.control.JobBy);
    EXPECT_EQ(again.control.Header[1], model.control.Header[1]);
    EXPECT_NEAR(again.control.TxFreq, model.control.TxFreq, 0.01) << "no text set it";
}

TEST_F(ProjectFile, WrittenFormToTheByte) {
    model = fullModel();
    EXPECT_EQ(written(),
              "\"//From KELDRIN v4.00i  Date:14/05/2021  Time:09:30:00\"\n"
              "&KELDRIN\n"
              "ProgramVersion=\"KELDRIN v4.00i\"\n"
              "Header(1)='From KELDRIN v4.00i  Date:14/05/2021  Time:09:30:00',\n"
              "Header(2)='It's \"the\" line',\n"
              "Header(4)='Data from 'x.avg', y',\n"
              "JobName=\"Smith \"Bob\", Ltd\"\n"
              "JobArea=\"a, b/c ! d\"\n"
              "JobBy=\"\"\n"
              "JobFor=\"O'Brien\"\n"
              "JobNumber=\"\"\n"
              "JobDate=\"\"\n"
              "LineName=\"\"\n"
              "LineNumber=-0.5\n"
              "LineAzimuth=87\n"
              "SurveyType='Moving-Loop',TEMUnits='nV/Am2',LengthUnits='m',StnScale=0.3048\n"
              "XTxLength=100,YTxLength=100,TxAzimuth=-13,NTxTurn=1\n"
              "TxFreq=33.33,TxRamp=50\n"
              "NTxWF=4, TxWFT0=7.55001\n"
              "TxWFT=0,0.1,7.50001,7.55001\n"
              "TxWFI=0,1,1,0\n"
              "TxStn=0,XTxCenter=402000.2,YTxCenter=0\n"
              "XRxOffset=0,YRxOffset=-0,RxArea=1.234E+4\n"
              "dpWeight=1,dxWeight=1,dzWeight=3,dzzWeight=1,Niteration=8\n"
              "ErrorFloor=1,DataCutoff=100\n"
              "Res0Layer=100,5.000E-2,1.235E+4\n"
              "Res0Error=50,500,12.35\n"
              "Thk0Layer=10.5,20,\n"
              "Thk0Error=500,500,\n"
              "NumStn=2,NumTW=3\n"
              "/\n" +
                  std::string(LabelLine) +
                  "100,402048.507,-0,0,100,98.5,3.123E-2,7.000E-3,5.99848E+04,3.39,1,0,1,,,"
                  "1.000E+5\n"
                  "100,402048.507,-0,0,100,98.5,1,0.3,-1.00000E-09,1126.06,0,0,1,1.00000E+20,"
                  "25.06,\n"
                  "100,402048.507,-0,0,100,98.5,1.000E+4,1.000E-6,0.00000E+00,0.01,0,0,0,"
                  "-0.00000E+00,,1.000E-3\n"
                  "100.062,402048.507,-0,0,100.062,98.562,3.123E-2,7.000E-3,5.99848E+04,3.39,1,0,"
                  "1,,,1.000E+5\n"
                  "100.062,402048.507,-0,0,100.062,98.562,1,0.3,-1.00000E-09,1126.06,0,0,1,"
                  "1.00000E+20,25.06,\n"
                  "100.062,402048.507,-0,0,100.062,98.562,1.000E+4,1.000E-6,0.00000E+00,0.01,0,0,"
                  "0,-0.00000E+00,,1.000E-3\n");
    EXPECT_THAT(messages.infos, ElementsAre("", "Writing KELDRIN file", path,
                                            "Writing inversion control information to line.std",
                                            "Writing TEM data to file line.std"));
}

TEST_F(ProjectFile, AWrittenProjectIsAFixedPoint) {
    model = fullModel();
    for (std::size_t i = 0; i < 2; ++i) { // within what the reader leaves alone
        model.hTrn[i].TEMerr[2] = 0.1F;
        model.hTrn[i].TWwidth[2] = 0.0001F;
    }
    const std::string first = written();
    EXPECT_EQ(rewritten(), first);
}

TEST_F(ProjectFile, OnlyTheCommentLineTellsTheNewDate) {
    const std::string example =
        fileContent(std::string(SourceDirectory) + "/tests/projectfile/data/inloop.std");
    ASSERT_FALSE(example.empty());
    putFile(path, example);
    fixClock(DateTime{2022, 1, 2, 3, 4, 5});
    const std::string again = rewritten();
    EXPECT_THAT(again, StartsWith("\"//From KELDRIN v4.00i  Date:02/01/2022  Time:03:04:05\"\n"));
    EXPECT_EQ(again.substr(again.find('\n')), example.substr(example.find('\n')));
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(ProjectFile, ShortWaveformsAndMissingAzimuths) {
    model = fullModel();
    model.control.NTxWF = 3;
    model.control.LineAzimuth = MissingValue;
    model.control.TxAzimuth = MissingValue;
    const std::string text = written();
    EXPECT_THAT(text, Not(HasSubstr("TxWF")));
    EXPECT_THAT(text, HasSubstr("LineAzimuth=-2147483648\n"));
    EXPECT_THAT(text, HasSubstr("TxAzimuth=*,"));
}

TEST_F(ProjectFile, OtherTransmittersOfAFixedLoopAreLeftOut) {
    model = fullModel();
    setSurveyType(model.control, FixedLoop);
    model.control.TxStn = 98.5 + 0.001;
    const std::string text = written();
    EXPECT_THAT(text, HasSubstr("NumStn=2,"));
    EXPECT_THAT(text, HasSubstr("\n100,402048.507"));
    EXPECT_THAT(text, Not(HasSubstr("100.062")));
    EXPECT_EQ(messages.infos.back(),
              "1 soundings of other transmitters are not in the project file.");
}

TEST_F(ProjectFile, HostileFilesNeitherCrashNorLoad) {
    const std::string megabyte(1 << 20, 'x');
    std::string binary;
    for (int i = 0; i < 4096; ++i) {
        binary += static_cast<char>(i * 37 % 256);
    }
    for (const std::string &content :
         {std::string(), binary, megabyte, "&KELDRIN\nJobName='" + megabyte,
          "&KELDRIN\n" + megabyte + "\n/\n", std::string("&KELDRIN\0/\n", 11),
          "&KELDRIN\n/\n" + megabyte, std::string("&KELDRIN\n/\n\x1A") + std::string(OneRow)}) {
        EXPECT_EQ(read(content), 1);
        EXPECT_EQ(model.SoundingCount, 0);
    }
    EXPECT_THAT(messages.errors, ElementsAre(HasSubstr("what follows it was not read")));
}

TEST_F(ProjectFile, LineEndsAndMarksOfOtherSystems) {
    model = fullModel();
    const std::string text = written();
    std::string dos = "\xEF\xBB\xBF";
    for (const char c : text) {
        dos += c == '\n' ? "\r\n" : std::string(1, c);
    }
    ASSERT_EQ(read(dos.substr(0, dos.size() - 2)), 0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(model.control.JobName, "Smith \"Bob\", Ltd");
    EXPECT_EQ(sounding(1).NumTW, 3);
    ASSERT_EQ(read(text + "\x1A  \r\n"), 0);
    EXPECT_THAT(messages.infos, Not(Contains(HasSubstr("end mark"))));
}

TEST_F(ProjectFile, FilesThatCannotBeReadLoseTheProject) {
    model = fullModel();
    path = directory.path("missing.std");
    EXPECT_EQ(STD_File_Read(model, path), 1) << "nobody is there to choose another";
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_THAT(messages.infos, ElementsAre("There is no file " + path + "."));
    model.SoundingCount = 2;
    path = directory.path();
    EXPECT_EQ(STD_File_Read(model, path), 1);
    EXPECT_EQ(model.SoundingCount, 0);
    EXPECT_THAT(messages.errors,
                ElementsAre("ERROR while opening KELDRIN file|" + path + "|is a directory"));
}

TEST_F(ProjectFile, BackslashesFindTheFileOnThisSystem) {
    read("&KELDRIN\n/\n" + std::string(LabelLine) + std::string(OneRow));
    std::string other = path;
    std::replace(other.begin(), other.end(), '/', '\\');
    EXPECT_EQ(STD_File_Read(model, other), 0);
#ifndef _WIN32
    EXPECT_EQ(other, path);
#endif
}

TEST_F(ProjectFile, AFailedWriteIsReportedAndKeepsTheOldFile) {
    model = fullModel();
    const std::string inNoDirectory = directory.path("none/line.std");
    EXPECT_FALSE(STD_File_Write(model, inNoDirectory).written);
    EXPECT_FALSE(STD_File_Write(model, directory.path()).written);
    EXPECT_THAT(
        messages.errors,
        ElementsAre(StartsWith("ERROR while writing KELDRIN file|" + inNoDirectory + "|"),
                    StartsWith("ERROR while writing KELDRIN file|" + directory.path() + "|")));
#ifdef __linux__
    messages.errors.clear();
    EXPECT_FALSE(STD_Table_Export(model, "/dev/full/table.csv").written);
    EXPECT_EQ(messages.errors.size(), 1U);
    if (::geteuid() != 0) { // nothing is read-only for root
        const std::string before = written();
        fs::permissions(directory.path(), fs::perms::owner_read | fs::perms::owner_exec);
        model.control.JobName = "changed";
        messages.errors.clear();
        EXPECT_EQ(written(), before);
        EXPECT_EQ(messages.errors.size(), 1U);
        fs::permissions(directory.path(), fs::perms::owner_all);
    }
#endif
}

TEST_F(ProjectFile, AnEmptyModelKeepsTheOldRows) {
    model = fullModel();
    const std::string full = written();
    model.SoundingCount = 0;
    const std::string empty = written();
    EXPECT_THAT(empty, testing::EndsWith("NumStn=0,NumTW=0\n/\n" + std::string(LabelLine)));
    EXPECT_EQ(fileContent(path + "~"), full);
    EXPECT_EQ(written(), empty);
    EXPECT_EQ(fileContent(path + "~"), full) << "a file without rows does not replace it";
    EXPECT_EQ(STD_File_Read(model, path), 1) << "no sounding";

    model = fullModel();
    setSurveyType(model.control, FixedLoop);
    model.control.JobName = "other";
    putFile(path, full);
    fs::remove(path + "~");
    written();
    EXPECT_EQ(fileContent(path + "~"), full) << "all soundings were left out";

    putFile(path, "no project at all\n1,2,3\n");
    written();
    EXPECT_EQ(fileContent(path + "~2~"), "no project at all\n1,2,3\n");
}

TEST(ProjectLines, StandForStoredWindowsUnderTheLabelsInForce) {
    const MessageRecorder messages;
    const std::string head = "comment\n&KELDRIN SurveyType='In-Loop' TEMUnits='uV/A'\n/\n";
    const std::string text = head + "1 2 3 4 .1 .05 5 3\r\n" // line 4, no labels yet
                                    "\n"
                                    "TEMcalc,Station,East,North,Elevation,TWcenter,TWwidth,TEMobs,"
                                    "TEMerr\n"
                                    "! a comment\n"
                                    "9,1,2,3,4,.2,.05,4,3\n"
                                    "9,1,2,3,4,.2,.05,*,3\n" // dropped
                                    "9,7,2,3,4,.1,.05,4,3\n";
    LineReader reader(256);
    reader.openText(text);
    SurveyModel model;
    DataTableLines lines;
    ASSERT_EQ(STD_File_Read_Text(model, reader, "none.std", lines), 0);
    EXPECT_EQ(model.SoundingCount, 2);
    EXPECT_EQ(lines.unitsIndex, MicrovoltPerAmpere);
    std::vector<int> rows;
    for (const DataTableLines::Row &row : lines.rows) {
        rows.push_back(row.line);
    }
    EXPECT_EQ(rows, (std::vector<int>{4, 8, 10}));
    ASSERT_EQ(lines.labels.size(), 2U);
    EXPECT_EQ(lines.labels[0].line, 0);
    EXPECT_EQ(lines.labels[0].column[ColTEMcalc], 12) << "the position without labels";
    EXPECT_EQ(lines.labels[1].line, 6);
    EXPECT_EQ(lines.labels[1].column[ColTEMcalc], 1);
    EXPECT_EQ(lines.labels[1].column[ColAResCalc], 0);
    EXPECT_EQ(lines.rows[0].labels, 0U);
    EXPECT_EQ(lines.rows[2].labels, 1U);
}

} // namespace
} // namespace keldrin
