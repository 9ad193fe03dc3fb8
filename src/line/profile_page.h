#pragma once

#include "line/line_columns.h"
#include "line/section_limits.h"
#include "line/section_page.h"
#include "model/survey_model.h"
#include "sounding/page_layout.h"

#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

// The profiles of a line: dB/dt of some windows against the distance, one curve for each window. It
// is laid out from the survey once, and then drawn, and asked what lies at a place.

struct ProfilePoint {
    int column = 0;     ///< index in ProfilePage::columns
    int window = 0;     ///< of the sounding, from 0
    float value = 0.0F; ///< dB/dt
    bool skipped = false;
};

/// A window along the line. A sounding whose windows lie at other times has no point.
struct ProfileCurve {
    float time = 0.0F;                ///< msec
    std::vector<ProfilePoint> points; ///< by column
};

struct ProfilePage {
    std::vector<std::string> title;
    std::string lengthUnits;
    std::string dataUnits;
    double left = 0.0; ///< limits of the distances, LengthUnits
    double right = 1.0;
    std::vector<LineColumn> columns;
    std::vector<std::string> stations; ///< of the columns; blank where they are missing
    PageFrame frame;
    float bottom = 0.0F; ///< limits of the data, ArcSinh
    float top = 1.0F;
    int every = 1;                    ///< the curves are of every n-th window; 0: of a list
    std::vector<ProfileCurve> curves; ///< by time
};

/// Lays the page out. Windows are those of the sounding with most of them; where the user chooses
/// no number there are ten curves at the most. Soundings of other transmitters have no points. The
/// axis holds all data that are not skipped, in whole decades.
/// survey  not changed
/// path    of the project; its file name stands in the title
ProfilePage profilePage(const SurveyModel &survey, const ProfileLimits &limits,
                        std::string_view path);

/// Draws a page on a cleared surface; afterwards the view is the page in centimetres. A curve is
/// open at skipped windows, which are rings, and across gaps of the line.
/// marked  ordinal of a sounding to be marked; 0 none
void drawProfile(const ProfilePage &page, int marked = 0);

/// The point at a place in page cm, within 3 mm: a Window with its time and dB/dt. Beside the
/// curves the sounding of the column with Nothing.
LineHit profileHit(const ProfilePage &page, float x, float y);

/// What a hit says beside its sounding, for the status bar: "Window 3: 0.12 msec   45.2 nV/Am2".
std::string profileText(const ProfilePage &page, const LineHit &hit);

} // namespace keldrin
