#pragma once

#include "line/profile_page.h"
#include "line/section_page.h"
#include "toolkit/dialog_spec.h"

namespace keldrin {

// The limits of the pages along the line, as the user sets them. Where limits are not set, the
// fields show those that the page has found itself.

/// Asks for the limits of a section, in dialog 131.
/// page    as the limits have made it
/// limits  changed when the user confirms; ends in the wrong order are exchanged
/// returns true when the user has confirmed, and the page is to be made anew
bool askSectionLimits(const SectionPage &page, SectionLimits &limits);

/// The same for a profile page, in dialog 132.
bool askProfileLimits(const ProfilePage &page, ProfileLimits &limits);

/// Their tables, for the manual.
const DialogSpec &sectionLimitsDialog();
const DialogSpec &profileLimitsDialog();

namespace SectionLimitsControl {
inline constexpr int ResistivityTitle = 4011;
inline constexpr int TimeTitle = 4012;
inline constexpr int HeightTitle = 4013;
inline constexpr int SetResistivity = 1140;
inline constexpr int ResistivityHigh = 1141;
inline constexpr int ResistivityLow = 1142;
inline constexpr int SetTime = 1143;
inline constexpr int TimeHigh = 1144;
inline constexpr int TimeLow = 1145;
inline constexpr int SetHeight = 1146;
inline constexpr int HeightHigh = 1147;
inline constexpr int HeightLow = 1148;
inline constexpr int SetExaggeration = 1149;
inline constexpr int Exaggeration = 1150;
inline constexpr int Colours = 1151;
} // namespace SectionLimitsControl

namespace ProfileLimitsControl {
inline constexpr int DataTitle = 4011;
inline constexpr int Every = 1152;
inline constexpr int Windows = 1156;
inline constexpr int SetData = 1153;
inline constexpr int DataHigh = 1154;
inline constexpr int DataLow = 1155;
} // namespace ProfileLimitsControl

} // namespace keldrin
