#include "base/clock.h"
#include "base/file_operations.h"
#include "engine/invert_project.h"
#include "engine/sounding_data.h"
#include "engine/survey_plans.h"
#include "projectfile/model_file.h"
#include "projectfile/project_file.h"
#include "support/failing_files.h"
#include "support/files.h"
#include "support/message_recorder.h"
#include "support/temporary_directory.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <functional>
#include <numeric>
#include <random>

namespace keldrin {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::size_t Windows = 24;

/// Projects made of the responses of known layers, without noise, with errors of 2 percent.
class Inversion : public testing::Test {
  protected:
    SurveyModel survey(int array, int soundings) {
        SurveyModel model;
        STD_Init_Namelist(model);
        allocateSoundings(model, soundings);
        setSurveyType(model.control, array);
        setTEMUnits(model.control, NanovoltPerAmpereSquareMetre);
        model.control.TxFreq = 16.0F;
        model.control.LineAzimuth = model.control.TxAzimuth;
        STD_Check_TxWaveform(model.control);
        model.SoundingCount = soundings;
        for (int i = 0; i < soundings; ++i) {
            SoundingRecord &record = model.hTrn[static_cast<std::size_t>(i)];
            record.Station = record.RxStn = record.East = 50.0 * i;
            record.TxStn = array == FixedLoop ? 0.0 : record.RxStn;
            record.North = 0.0;
            record.NumTW = Windows;
            float time = 0.02F;
            for (std::size_t k = 0; k < Windows; ++k, time *= 1.25F) {
                // As a file holds them: beside a change of sign a rounded time is another value.
                record.TWcenter[k] = std::round(1000.0F * time) / 1000.0F;
                record.TWwidth[k] = std::round(200.0F * time) / 1000.0F;
                record.TEMerr[k] = 2.0F;
                record.TEMwgt[k] = {0.0F, 0.0F, 1.0F};
            }
        }
        return model;
    }

    /// The response of layers: ln of ohm-m, and thicknesses in m.
    void respond(SurveyModel &model, std::vector<double> lnResistivity,
                 std::vector<double> thickness) {
        ResponseWorkspace workspace;
        const std::vector<SoundingPlan> plans = planSurvey(model);
        for (std::size_t i = 0; i < plans.size(); ++i) {
            ASSERT_EQ(plans[i].fault, PlanFault::None);
            std::vector<double> values(Windows * plans[i].plan.components());
            layeredResponse(plans[i].plan, lnResistivity, thickness, workspace, values);
            for (std::size_t k = 0; k < Windows; ++k) {
                model.hTrn[i].TEMobs[k] = static_cast<float>(values[k]);
            }
        }
    }

    void write(SurveyModel &model) { ASSERT_TRUE(STD_File_Write(model, path()).written); }

    InvertResult invert(InvertOptions options = {}) {
        EngineRun run{2, &stop};
        said.clear();
        run.say = [&](std::string_view line) {
            said.append(line).append("\n");
            count();
        };
        run.progress = [&](int, int) {
            count();
        };
        return invertProject(path(), options, run,
                             [&](std::string_view why) { said.append(why).append("\n"); });
    }

    SurveyModel read() {
        SurveyModel model;
        std::string project = path();
        EXPECT_EQ(STD_File_Read(model, project), 0);
        EXPECT_EQ(M1D_File_Read(model, directory.path("line.m1d")), 0);
        return model;
    }

    std::string path() { return directory.path("line.std"); }

    /// One of the moments at which a test may stop the run: lines, progress, calls for files.
    void count() { stop = ++moments == stopAt || stop; }

    TemporaryDirectory directory;
    MessageRecorder messages;
    std::string said;
    std::atomic<bool> stop = false;
    int moments = 0;
    int stopAt = 0; ///< 0: never
};

/// Counts the calls for files as moments of a run.
class CountedFiles {
  public:
    explicit CountedFiles(std::function<void()> count) : count_(std::move(count)) {
        const FileOperations real = systemFileOperations();
        FileOperations &use = fileOperations();
        use.open = counted(real.open);
        use.read = counted(real.read);
        use.write = counted(real.write);
        use.sync = counted(real.sync);
        use.close = counted(real.close);
        use.rename = counted(real.rename);
        use.link = counted(real.link);
    }
    CountedFiles(const CountedFiles &) = delete;
    CountedFiles &operator=(const CountedFiles &) = delete;
    ~CountedFiles() { fileOperations() = systemFileOperations(); }

  private:
    template <class Result, class... Arguments>
    std::function<Result(Arguments...)> counted(std::function<Result(Arguments...)> call) {
        return [this, call = std::move(call)](Arguments... arguments) {
            count_();
            return call(arguments...);
        };
    }

    std::function<void()> count_;
};

TEST_F(Inversion, AHalfSpaceComesBackWithinOnePercentWhereTheDataSee) {
    for (const int array : {FixedLoop, MovingLoop, InLoop, CoincidentLoop}) {
        SurveyModel model = survey(array, 3);
        if (array == MovingLoop) {
            for (int i = 0; i < 3; ++i) {
                model.hTrn[static_cast<std::size_t>(i)].TxStn -= 120.0;
            }
        }
        respond(model, {std::log(40.0)}, {});
        write(model);
        ASSERT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done) << said;
        const SurveyModel result = read();
        SCOPED_TRACE(said);
        int seen = 0;
        for (int i = 0; i < 3; ++i) {
            const SoundingRecord &record = result.hTrn[static_cast<std::size_t>(i)];
            for (std::size_t k = 0; k < static_cast<std::size_t>(record.NumLayer); ++k) {
                // A layer counts with all below it, so that the value hardly ever rises.
                EXPECT_LE(record.Rsns[k], 1.1F * record.Rsns[k - std::min<std::size_t>(k, 1)]);
                if (record.Rsns[k] >= 3.0F) {
                    EXPECT_NEAR(record.ResInv[k], 40.0F, 0.4F) << array << " layer " << k;
                    ++seen;
                }
            }
            for (std::size_t k = 0; k < Windows; ++k) {
                EXPECT_NEAR(record.TEMcalc[k], record.TEMobs[k],
                            0.01F * std::fabs(record.TEMobs[k]) + 1.0E-3F);
            }
        }
        EXPECT_GT(seen, 30) << array;
    }
}

TEST_F(Inversion, AMagnitudeIsMadeOfTheComponentsThatAreSwitchedOn) {
    SurveyModel model = survey(FixedLoop, 4);
    const std::array<std::array<float, ComponentAxes>, 4> on = {
        {{1.0F, 1.0F, 1.0F}, {1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, {0.0F, 0.0F, 1.0F}}};
    for (std::size_t i = 0; i < on.size(); ++i) {
        model.hTrn[i].TEMwgt.fill(on[i]);
        model.hTrn[i].East = 170.0;
        model.hTrn[i].North = 40.0;
    }
    const std::vector<SoundingPlan> plans = planSurvey(model);
    const Eigen::VectorXd lnResistivity = Eigen::VectorXd::Constant(1, std::log(30.0));
    const std::vector<double> thickness = {1.0};
    std::array<std::vector<float>, 4> values;
    ResponseRoom room;
    for (std::size_t i = 0; i < on.size(); ++i) {
        values[i] = calculatedData(model.hTrn[i], plans[i], DataKind::Magnitude,
                                   {lnResistivity, thickness}, room);
    }
    for (std::size_t k = 0; k < Windows; ++k) {
        const float horizontal = std::hypot(values[1][k], values[2][k]);
        EXPECT_FLOAT_EQ(values[0][k], std::hypot(horizontal, values[3][k])) << k;
        EXPECT_GT(std::min(values[1][k], values[2][k]), 0.0F) << k;
    }
}

TEST_F(Inversion, FeetAndMetresGiveTheSameModel) {
    SurveyModel model = survey(InLoop, 2);
    respond(model, {std::log(20.0), std::log(200.0)}, {25.0});
    write(model);
    ASSERT_EQ(invert(), InvertResult::Done);
    const SurveyModel metres = read();
    setLengthUnits(model.control, Feet);
    model.control.XTxLength /= 0.3048F;
    model.control.YTxLength /= 0.3048F;
    write(model);
    ASSERT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
    const SurveyModel feet = read();
    ASSERT_EQ(feet.hTrn[0].NumLayer, metres.hTrn[0].NumLayer);
    for (std::size_t k = 0; k < static_cast<std::size_t>(feet.hTrn[0].NumLayer); ++k) {
        EXPECT_NEAR(feet.hTrn[0].ResInv[k] / metres.hTrn[0].ResInv[k], 1.0F, 0.002F);
        EXPECT_NEAR(feet.hTrn[0].ThkInv[k] * 0.3048F, metres.hTrn[0].ThkInv[k],
                    0.01F); // as files hold it
    }
}

// How much a model varies with depth, and from sounding to sounding.
double roughness(const SurveyModel &model) {
    double sum = 0.0;
    for (std::size_t k = 1; k < static_cast<std::size_t>(model.hTrn[0].NumLayer); ++k) {
        sum += std::pow(std::log(model.hTrn[0].ResInv[k] / model.hTrn[0].ResInv[k - 1]), 2);
    }
    return sum;
}
double curvature(const SurveyModel &model) {
    double sum = 0.0;
    const LayerReals &rho = model.hTrn[0].ResInv;
    for (std::size_t k = 2; k < static_cast<std::size_t>(model.hTrn[0].NumLayer); ++k) {
        sum += std::pow(std::log(rho[k] * rho[k - 2] / (rho[k - 1] * rho[k - 1])), 2);
    }
    return sum;
}
double difference(const SurveyModel &model) {
    double sum = 0.0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(model.hTrn[0].NumLayer); ++k) {
        sum += std::pow(std::log(model.hTrn[0].ResInv[k] / model.hTrn[1].ResInv[k]), 2);
    }
    return sum;
}

TEST_F(Inversion, EveryWeightAndMarkHasItsEffect) {
    SurveyModel model = survey(InLoop, 2);
    respond(model, {std::log(20.0), std::log(300.0), std::log(5.0)}, {15.0, 40.0});
    const auto first = model.hTrn[0];
    respond(model, {std::log(40.0), std::log(100.0), std::log(5.0)}, {15.0, 60.0});
    model.hTrn[0] = first;
    const auto inverted = [&] {
        write(model);
        EXPECT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
        return read();
    };
    const SurveyModel usual = inverted();
    model.control.dzWeight = 30.0F;
    EXPECT_LT(roughness(inverted()), 0.8 * roughness(usual));
    model.control.dzWeight = 3.0F;
    model.control.dzzWeight = 30.0F;
    EXPECT_LT(curvature(inverted()), 0.8 * curvature(usual));
    model.control.dzzWeight = 1.0F;
    model.control.dxWeight = 30.0F;
    EXPECT_LT(difference(inverted()), 0.3 * difference(usual));
    model.control.dxWeight = 1.0F;
    model.control.dpWeight = 100.0F;
    EXPECT_LT(roughness(inverted()), 0.8 * roughness(usual)) << "drawn to the half-space";
    model.control.dpWeight = 1.0F;
    model.control.ErrorFloor = 30.0F;
    EXPECT_LT(inverted().hTrn[0].Rsns[0], 0.5F * usual.hTrn[0].Rsns[0]);
    model.control.ErrorFloor = 1.0F;
    model.control.DataCutoff = 2.0F;
    EXPECT_EQ(inverted().hTrn[0].Rsns[0], 0.0F) << "no datum is below the cut-off";
    EXPECT_THAT(said, HasSubstr("2 soundings without usable data"));
    model.control.DataCutoff = 100.0F;
    for (std::size_t k = 8; k < Windows; ++k) {
        model.hTrn[0].TEMerr[k] = withSkipMark(model.hTrn[0].TEMerr[k], true);
    }
    const SurveyModel skipped = inverted();
    EXPECT_LT(skipped.hTrn[0].Rsns[15], usual.hTrn[0].Rsns[15]);
    EXPECT_TRUE(isPresent(skipped.hTrn[0].TEMcalc[Windows - 1])) << "skipped windows too";
}

TEST_F(Inversion, DoesTheIterationsThatAreAskedFor) {
    SurveyModel model = survey(InLoop, 2);
    respond(model, {std::log(20.0), std::log(300.0)}, {15.0});
    model.control.Niteration = 1;
    write(model);
    ASSERT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
    EXPECT_THAT(said, HasSubstr("iteration 1 of 1: misfit"));
    EXPECT_THAT(said, Not(HasSubstr("iteration 2")));
    EXPECT_THAT(said, HasSubstr("no smooth model was found that fits within them; the models still "
                                "changed, more iterations may help"));
}

TEST_F(Inversion, SaysHowDeepTheDataSee) {
    SurveyModel model = survey(InLoop, 1);
    respond(model, {std::log(20.0), std::log(300.0)}, {15.0});
    write(model);
    ASSERT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
    const SurveyModel result = read();
    const SoundingRecord &record = result.hTrn[0];
    double depth = 0.0;
    for (std::size_t k = 0; record.Rsns[k] >= 3.0F; ++k) {
        depth += static_cast<double>(record.ThkInv[k]);
    }
    const std::string metres = std::to_string(std::lround(depth));
    EXPECT_THAT(said, HasSubstr("the data see down to " + metres + " to " + metres + " m"));
}

// Neighbours at one place, as in a project without coordinates, are as far apart as their stations.
TEST_F(Inversion, StationsGiveTheDistanceWhereCoordinatesDoNot) {
    SurveyModel model = survey(InLoop, 2);
    respond(model, {std::log(20.0), std::log(300.0)}, {15.0});
    const auto first = model.hTrn[0];
    respond(model, {std::log(60.0)}, {});
    model.hTrn[0] = first;
    const auto inverted = [&] {
        write(model);
        EXPECT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
        return read();
    };
    const SurveyModel apart = inverted();
    model.hTrn[1].East = model.hTrn[0].East;
    const SurveyModel together = inverted();
    EXPECT_EQ(together.hTrn[0].ResInv, apart.hTrn[0].ResInv);
    EXPECT_EQ(together.hTrn[1].ResInv, apart.hTrn[1].ResInv);
}

TEST(HuberSum, CountsOutliersLinearly) {
    EXPECT_NEAR(huberSum(Eigen::Vector3d(1.0, -2.5, 10.0), 2.5), 1.0 + 6.25 + 2.5 * 17.5, 1.0E-12);
}

TEST_F(Inversion, ErrorsThatNobodyMeasuredAreEstimatedAndNamed) {
    SurveyModel model = survey(InLoop, 5);
    respond(model, {std::log(20.0), std::log(100.0)}, {30.0});
    std::mt19937 random(5);
    std::normal_distribution<double> normal;
    const auto inverted = [&](bool measured) {
        SurveyModel noisy = model;
        for (std::size_t i = 0; i < 5; ++i) {
            for (std::size_t k = 0; k < Windows; ++k) {
                float &value = noisy.hTrn[i].TEMobs[k];
                const auto deviation = static_cast<double>(std::hypot(0.02F * value, 0.3F));
                value += static_cast<float>(deviation * normal(random));
                const double percent =
                    100.0 * deviation / static_cast<double>(std::hypot(value, 0.01F));
                noisy.hTrn[i].TEMerr[k] =
                    measured ? static_cast<float>(std::min(percent, 999.0)) : 1.0F;
            }
        }
        write(noisy);
        EXPECT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
        return read();
    };
    inverted(true);
    EXPECT_THAT(said, Not(HasSubstr("estimated")));
    const SurveyModel result = inverted(false);
    EXPECT_THAT(said, HasSubstr(" by estimated errors, 5 of 5 soundings"));
    EXPECT_THAT(said, HasSubstr("errors of 5 soundings were estimated"));
    const auto numberAfter = [this](const std::string &words) {
        const std::size_t at = said.rfind(words);
        return at == std::string::npos ? 0.0 : std::stod(said.substr(at + words.size()));
    };
    EXPECT_GT(numberAfter("by the stated errors the misfit is "),
              1.5 * numberAfter("median misfit "));
    const SoundingRecord &record = result.hTrn[2];
    float depth = 0.0F;
    for (std::size_t k = 0; k < static_cast<std::size_t>(record.NumLayer); ++k) {
        depth += record.ThkInv[k];
        const bool farFromBoundary = depth < 15.0F || depth - record.ThkInv[k] > 60.0F;
        if (record.Rsns[k] >= 10.0F && farFromBoundary) {
            EXPECT_NEAR(std::log(record.ResInv[k] / (depth < 30.0F ? 20.0F : 100.0F)), 0.0, 0.4)
                << depth;
        }
    }
    // Noise-free data need no estimate, whatever their errors say.
    write(model);
    ASSERT_EQ(invert({.forward = false, .fresh = true}), InvertResult::Done);
    EXPECT_THAT(said, Not(HasSubstr("estimated")));
}

TEST_F(Inversion, AFaultAtAnyCallLeavesBothFilesAsTheyWereOrBothNew) {
    SurveyModel model = survey(InLoop, 2);
    respond(model, {std::log(40.0)}, {});
    write(model);
    fixClock(DateTime{2026, 5, 14, 9, 30, 0}); // models of another second are other models
    ASSERT_EQ(invert(), InvertResult::Done);
    int faults = 0;
    for (const FileCall call : {FileCall::Open, FileCall::Write, FileCall::Sync, FileCall::Close,
                                FileCall::Rename, FileCall::Link}) {
        for (int number = 1;; ++number) {
            const std::string project = fileContent(path());
            const std::string models = fileContent(directory.path("line.m1d"));
            const FailingFiles failing(SpoiledCall{.call = call, .number = number});
            const InvertResult result = invert({.forward = false, .fresh = true});
            if (!failing.struck()) {
                break;
            }
            ++faults;
            if (result != InvertResult::Done) {
                EXPECT_EQ(fileContent(path()), project) << said;
                EXPECT_EQ(fileContent(directory.path("line.m1d")), models) << said;
                EXPECT_NE(said, "");
            }
            const std::filesystem::directory_iterator files(directory.path());
            EXPECT_EQ(std::distance(files, std::filesystem::directory_iterator()), 2) << said;
        }
    }
    EXPECT_GT(faults, 8);
    fixClock({});
}

// The second line of a model file says when it was written.
std::string withoutStamp(const std::string &models) {
    const std::size_t begin = models.find('\n') + 1;
    return models.substr(0, begin) + models.substr(models.find('\n', begin) + 1);
}

TEST_F(Inversion, AStopAtAnyMomentLeavesBothFilesAsTheyWereOrBothNew) {
    SurveyModel model = survey(InLoop, 3);
    respond(model, {std::log(40.0)}, {});
    write(model);
    const std::string project = fileContent(path());
    const std::string modelPath = directory.path("line.m1d");
    ASSERT_EQ(invert(), InvertResult::Done);
    const std::string newProject = fileContent(path());
    const std::string newModels = withoutStamp(fileContent(modelPath));
    const CountedFiles files([this] { count(); });
    int stopped = 0;
    for (stopAt = 1;; ++stopAt) {
        putFile(path(), project);
        std::filesystem::remove(modelPath);
        stop = false;
        moments = 0;
        const InvertResult result = invert();
        SCOPED_TRACE(stopAt);
        if (result == InvertResult::Done) {
            EXPECT_EQ(fileContent(path()), newProject);
            EXPECT_EQ(withoutStamp(fileContent(modelPath)), newModels);
        } else {
            EXPECT_EQ(fileContent(path()), project);
            EXPECT_FALSE(std::filesystem::exists(modelPath));
        }
        const std::filesystem::directory_iterator left(directory.path());
        EXPECT_EQ(std::distance(left, std::filesystem::directory_iterator()),
                  result == InvertResult::Done ? 2 : 1);
        if (moments < stopAt) {
            break;
        }
        stopped += result == InvertResult::Stopped ? 1 : 0;
    }
    EXPECT_GT(stopped, 30);
}

} // namespace
} // namespace keldrin
