#include "projectfile/project_case.h"

namespace keldrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using ControlRead = ProjectCase;

TEST_F(ControlRead, EmptyGroupGivesTheDefaults) {
    ASSERT_EQ(readGroup(""), 0);
    const ControlValues &control = model.control;
    EXPECT_EQ(control.NumStn, 2048);
    EXPECT_EQ(control.NumTW, 128);
    EXPECT_EQ(control.SurveyType, "Moving-Loop");
    EXPECT_EQ(control.Header[0], "From KELDRIN v4.00i  Date:14/05/2021  Time:09:30:00");
    EXPECT_EQ(control.LineAzimuth, 90.0F) << "taken from TxAzimuth";
    EXPECT_EQ(control.NTxWF, 4);
    EXPECT_EQ(control.TxWFT0, 250.05F);
    EXPECT_THAT(std::vector<float>(control.TxWFT.begin(), control.TxWFT.begin() + 4),
                ElementsAre(0.0F, 0.1F, 250.0F, 250.05F));
    EXPECT_THAT(messages.errors, IsEmpty());
}

TEST_F(ControlRead, LogsItsStagesInOrder) {
    readGroup("Header(1)='first',Header(3)='third'");
    EXPECT_THAT(messages.infos,
                ElementsAre("", "Reading data from", path, "Reading namelist data from", path, "",
                            "Input-model-file header:", "first", "third", "",
                            "Reading TEM data from", path,
                            "Have found correct column labels, now reading numerical data.",
                            "1 TEM soundings read from line.std"));
}

TEST_F(ControlRead, TakesEveryFormOfTheSyntax) {
    ASSERT_EQ(read("an older head\n&KELDRINS x\n  &keldrin jobname = 'on the first line' ! note\n"
                   "Header ( 2 ) = \"two\" , HEADER(4)='four',\n"
                   "TxWFT=-3,2*-1.5,\n  ,0 TxWFI 0\n/\n"),
              1);
    EXPECT_THAT(messages.errors, ElementsAre(StartsWith("ERROR while reading *.std file namelist "
                                                        "block near line:|  ,0 TxWFI 0")))
        << "TxWFI lacks its '='";
    EXPECT_EQ(model.control.JobName, "on the first line");
    EXPECT_EQ(model.control.Header[1], "two");
    EXPECT_EQ(model.control.Header[3], "four");

    ASSERT_EQ(
        readGroup("NTxWF=4\nTxWFT=-3,\n2*-1.5e0 -1D-1,TxWFI=,1,2*,\nTxWFI(3)=0.5\n"
                  "Res0Layer=2*100,,3*,9\nThk0Layer=10,20,\nRxArea=**** NTxTurn= * StnScale=,"),
        0);
    EXPECT_EQ(model.control.Thk0Layer[1], 20.0F);
    EXPECT_EQ(model.control.Thk0Layer[2], 0.0F);
    EXPECT_EQ(model.control.Res0Layer[6], 9.0F) << "null values pass over elements";
    EXPECT_EQ(model.control.RxArea, 10000.0F);
    EXPECT_EQ(model.control.NTxTurn, 1);
    EXPECT_EQ(model.control.StnScale, 1.0F);
}

TEST_F(ControlRead, TheTableBeginsOnTheLineBehindTheSlash) {
    ASSERT_EQ(read("&KELDRIN NumTW=26/ 1,2,3\n1,2,3,4,0.1,0.1,5,3\n"), 0);
    EXPECT_EQ(model.SoundingCount, 1);
    EXPECT_EQ(model.control.NumTW, 26);
}

TEST_F(ControlRead, FaultsNameTheirLineAndLoseTheProject) {
    for (const std::string line : {"Unknown=1",       "LineName=plain",
                                   "NTxTurn=1.5",     "NTxTurn='1'",
                                   "NTxTurn=1,2",     "JobName=5",
                                   "Header(5)='x'",   "Header(0)='x'",
                                   "Header(1:2)='x'", "Header='a','b','c','d','e'",
                                   "JobName(1)='x'",  "TxWFT=33*0",
                                   "TxWFT=0*1",       "TxWFT=99999999999*1",
                                   "LineNumber=nan",  "LineNumber=1e99",
                                   "LineNumber=0x10", "3",
                                   "'text'",          "&END",
                                   "TxWFT(2)=1,2",    "NTxTurn"}) {
        ASSERT_EQ(readGroup("JobArea='kept'\n" + line), 1) << line;
        EXPECT_THAT(
            messages.errors,
            ElementsAre("ERROR while reading *.std file namelist block near line:|" + line));
        EXPECT_EQ(model.SoundingCount, 0);
        EXPECT_EQ(model.control.JobArea, "kept");
    }
}

TEST_F(ControlRead, MissingEndOfTheGroupIsReported) {
    for (const std::string_view content : {"", "no group at all\n/\n", "&KELDRIN\nNTxTurn=1\n"}) {
        EXPECT_EQ(read(content), 1);
        EXPECT_THAT(messages.errors, ElementsAre("ERROR while reading input *.std file namelist "
                                                 "block|Unexpected end-of-file."));
    }
}

TEST_F(ControlRead, QuotesInsideTexts) {
    struct Case {
        std::string_view line;
        std::string_view JobName;
    };
    for (const Case &each : {
             Case{"JobName=\"O'Brien\"", "O'Brien"},
             Case{"JobName='O'Brien'", "O'Brien"},
             Case{"JobName=\"Smith \"Bob\", Ltd\"", "Smith \"Bob\", Ltd"},
             Case{"JobName=\"The \"A\" \"B\" line\"", "The \"A\" \"B\" line"},
             Case{"JobName='it''s'", "it''s"},
             Case{"JobName=\"a/b, c=d ! e\" ! comment", "a/b, c=d ! e"},
             Case{"JobName='x',JobArea='y'", "x"},
             Case{"JobName='x' ,, TxWFT (2) = 1", "x"},
             Case{"JobName='x' Unknown=1'", "x' Unknown=1"},
             Case{"JobName='never closed, ", "never closed,"},
             Case{"JobName=\"5\"\"", "5\""},
             Case{"JobName=\"\"", ""},
             Case{"JobName='a/' /b'", "a/' /b"},
         }) {
        EXPECT_EQ(readGroup(each.line), 0) << each.line;
        EXPECT_EQ(model.control.JobName, each.JobName) << each.line;
    }
    ASSERT_EQ(read("&KELDRIN Header='a', 'b'\"c\" JobName='end' /  \n1,2,3,4,0.1,0.1,5,3\n"), 0);
    EXPECT_EQ(model.control.Header[0], "a");
    EXPECT_EQ(model.control.Header[1], "b'\"c\" JobName='end") << "no rule ends it sooner";
}

TEST_F(ControlRead, TextsAreCutAtTheirLengthAndAtACharacter) {
    ASSERT_EQ(readGroup("LineName='12345678901234567890'\nJobNumber='123456789012345\u00e9'"), 0);
    EXPECT_EQ(model.control.LineName, "1234567890123456");
    EXPECT_EQ(model.control.JobNumber, "123456789012345");
}

TEST_F(ControlRead, EnumerationsAreNormalised) {
    struct Case {
        std::string_view SurveyType, LengthUnits;
        std::string_view surveyText, lengthText;
    };
    for (const Case &each :
         {Case{"in-LOOP", "Feet", "In-Loop", "ft"}, Case{" i", "metres", "In-Loop", "m"},
          Case{"X", "", "Moving-Loop", "m"}, Case{"coin", " f", "Coincident-Loop", "ft"},
          Case{"fixed", "yd", "Fixed-Loop", "m"}}) {
        ASSERT_EQ(readGroup("SurveyType='" + std::string(each.SurveyType) + "' LengthUnits='" +
                            std::string(each.LengthUnits) + "'"),
                  0);
        EXPECT_EQ(model.control.SurveyType, each.surveyText);
        EXPECT_EQ(model.control.LengthUnits, each.lengthText);
    }
}

TEST_F(ControlRead, RangesAreForced) {
    ASSERT_EQ(readGroup("StnScale=-2 NTxTurn=0 XTxLength=0 YTxLength=1E9 TxAzimuth=400 "
                        "LineAzimuth=-2147483648 RxArea=1E30 XRxOffset=-1E30 TxStn=1E12 "
                        "dpWeight=0 Niteration=33 ErrorFloor=0 DataCutoff=1E5 NumStn=-3 NumTW=1 "
                        "NumLayer=1000000"),
              0);
    const ControlValues &control = model.control;
    EXPECT_EQ(control.StnScale, 2.0F);
    EXPECT_EQ(control.NTxTurn, 1);
    EXPECT_EQ(control.XTxLength, 0.1F);
    EXPECT_EQ(control.YTxLength, 990000.0F);
    EXPECT_EQ(control.TxAzimuth, 360.0F);
    EXPECT_EQ(control.LineAzimuth, -360.0F);
    EXPECT_EQ(control.RxArea, 9900000256.0F);
    EXPECT_EQ(control.XRxOffset, -990000000.0F);
    EXPECT_EQ(control.TxStn, 9.9E9);
    EXPECT_EQ(control.dpWeight, 0.01F);
    EXPECT_EQ(control.Niteration, 32);
    EXPECT_EQ(control.ErrorFloor, 0.1F);
    EXPECT_EQ(control.DataCutoff, 9999.9F);
    EXPECT_EQ(control.NumStn, 16);
    EXPECT_EQ(control.NumTW, 16);
    EXPECT_EQ(control.NumLayer, MaxLayers) << "an index into arrays of that length";
    ASSERT_EQ(readGroup("NTxTurn=33 LineAzimuth=-1e32"), 0);
    EXPECT_EQ(model.control.NTxTurn, 32);
    EXPECT_EQ(model.control.LineAzimuth, 90.0F) << "unset, and so taken from TxAzimuth";
}

TEST_F(ControlRead, OlderNamesReplaceTheirSuccessors) {
    ASSERT_EQ(readGroup("PROJECT='P' CLIENT='C' LINE='L' REPRATE=4 TxFreq=32 JobName='J'"), 0);
    EXPECT_EQ(model.control.JobName, "P");
    EXPECT_EQ(model.control.JobFor, "C");
    EXPECT_EQ(model.control.LineName, "L");
    EXPECT_EQ(model.control.TxFreq, 4.0F);
    EXPECT_EQ(model.control.TxWFT[2], 62.5F) << "replaced before the waveform is made";
    ASSERT_EQ(readGroup("PROJECT=' ' REPRATE=0 TxFreq=32 JobName='J'"), 0);
    EXPECT_EQ(model.control.JobName, "J");
    EXPECT_EQ(model.control.TxFreq, 32.0F);
}

TEST_F(ControlRead, LayersAreCountedFromTheResistivities) {
    ASSERT_EQ(readGroup("Res0Layer=100,50,20,0,7"), 0);
    EXPECT_EQ(model.control.NumLayer, 3);
    ASSERT_EQ(readGroup("Res0Layer=100,50,20 NumLayer=2"), 0);
    EXPECT_EQ(model.control.NumLayer, 2);
}

TEST_F(ControlRead, WaveformFaultsAreReportedAndReset) {
    constexpr std::string_view name = "STD_Check_TxWaveform.WARNING|";
    constexpr std::string_view reset =
        "|Will reset to default waveform shape using TxFreq & TxRamp";
    struct Case {
        std::string_view waveform;
        std::string_view words;
    };
    for (const Case &each :
         {Case{"NTxWF=3 TxWFT0=2 TxWFT=0,1,1", "TxWFT(2)=1 >= TxWFT(3)=1 msec"},
          Case{"NTxWF=3 TxWFT0=2 TxWFT=0,1,2.5", "TxWFT(3)=2.5 > fTxWFT0=2 msec"},
          Case{"NTxWF=2 TxWFT0=2 TxWFT=0,1 TxWFI=0,-1.5", "ABS{TxWFI(2)=-1.5} > 1.0"}}) {
        ASSERT_EQ(readGroup(each.waveform), 0);
        EXPECT_THAT(messages.errors,
                    ElementsAre(std::string(name) + std::string(each.words) + std::string(reset)));
        EXPECT_EQ(model.control.NTxWF, 4);
    }
    ASSERT_EQ(readGroup("NTxWF=2 TxWFT0=2 TxWFT=0,1 TxWFI=1,-1"), 0);
    EXPECT_THAT(messages.errors, IsEmpty());
    EXPECT_EQ(model.control.NTxWF, 2) << "a good short waveform stands";

    ASSERT_EQ(readGroup("TxFreq=1000 TxRamp=300"), 0);
    EXPECT_THAT(messages.errors,
                ElementsAre("STD_Check_TxWaveform.WARNING|TxRamp=300 usec > TxWaveform/4=250 usec|"
                            "TxWaveform/4 usec = 1E6/(4*TxFreq), where TxFreq=1000 hertz"));
    EXPECT_EQ(model.control.TxRamp, 300.0F);
}

TEST(ControlFromMetadata, DefaultsReachTheProject) {
    SurveyModel model;
    Control_From_Metadata(model);
    EXPECT_EQ(model.control.SurveyTypeIndex, InLoop);
    EXPECT_EQ(model.control.SurveyType, "In-Loop");
    EXPECT_EQ(model.control.TxRamp, 50.0F) << "a ramp of 0 is none";
    EXPECT_EQ(model.control.LineName, "0");
    EXPECT_EQ(model.control.RxArea, 10000.0F);
    EXPECT_FALSE(isPresent(model.control.TxAzimuth));
}

TEST(ControlFromMetadata, LevelsAndUnitsCount) {
    SurveyModel model;
    model.control.TxStn = 7.0;
    model.control.JobArea = "stays";
    Metadata &data = model.metadata;
    data.Tx.Stn.value = 3.0;
    data.Unit.Length.value = Feet;
    data.Tx.LengthX.value = 30.48F;
    data.Survey.ArrayIndex = 9;
    data.Line.Azimuth = {45.0F, 1};
    data.Tx.Azimuth = {10.0F, 1};
    Control_From_Metadata(model);
    EXPECT_EQ(model.control.TxStn, 7.0) << "no record named it";
    EXPECT_FLOAT_EQ(model.control.XTxLength, 100.0F);
    EXPECT_EQ(model.control.SurveyTypeIndex, CoincidentLoop);
    EXPECT_EQ(model.control.TxAzimuth, 10.0F);
    EXPECT_EQ(model.control.JobArea, "stays");
    data.Line.Azimuth.level = 2;
    Control_From_Metadata(model);
    EXPECT_EQ(model.control.TxAzimuth, 45.0F);
}

} // namespace
} // namespace keldrin
