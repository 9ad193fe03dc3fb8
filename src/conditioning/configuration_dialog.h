#pragma once

#include "model/survey_model.h"
#include "toolkit/dialog_form.h"

#include <string>
#include <string_view>

namespace keldrin {

/// The project's path, taken apart for the "Save As" field.
struct ProjectName {
    std::string directory; ///< with its last separator
    std::string base;
    std::string extension; ///< ".std" as the path spelled it

    [[nodiscard]] std::string path() const { return directory + base + extension; }
};

ProjectName nameOfProject(std::string_view path);

/// What dialog 108 shows and changes.
struct Configuration {
    SurveyModel *model = nullptr; ///< its control values
    ProjectName name;
};

namespace ConfigurationControl {
inline constexpr int Header2 = 1001;
inline constexpr int Header3 = 1003;
inline constexpr int Header4 = 1004;
inline constexpr int JobName = 1071;
inline constexpr int JobArea = 1100;
inline constexpr int JobFor = 1101;
inline constexpr int JobBy = 1102;
inline constexpr int LineName = 1072;
inline constexpr int LineNumber = 1104;
inline constexpr int LineAzimuth = 1106;
inline constexpr int StnScale = 1108;
inline constexpr int LengthUnits = 1006;
inline constexpr int SurveyArray = 1008;
inline constexpr int Offset = 1011;
inline constexpr int OffsetUnit = 1110;
inline constexpr int LoopSizeTitle = 1010;
inline constexpr int LoopSizeX = 1015;
inline constexpr int LoopSizeY = 1016;
inline constexpr int LoopAzimuth = 1078;
inline constexpr int Turns = 1024;
inline constexpr int Ramp = 1025;
inline constexpr int Frequency = 1026;
inline constexpr int Transmitter = 1122;
inline constexpr int LoopCenterTitle = 1111;
inline constexpr int LoopEast = 1046;
inline constexpr int LoopNorth = 1047;
inline constexpr int BackgroundWeight = 1032;
inline constexpr int SmoothnessWeight = 1038;
inline constexpr int ErrorFloor = 1037;
inline constexpr int Iterations = 1041;
inline constexpr int DataCutoff = 1051;
inline constexpr int SaveAs = 1043;
} // namespace ConfigurationControl

extern const DialogForm<Configuration> ConfigurationDialog;

} // namespace keldrin
