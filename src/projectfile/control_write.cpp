#include "projectfile/control_block.h"

#include "base/clock.h"
#include "base/number_text.h"
#include "base/safe_writer.h"
#include "base/version.h"
#include "projectfile/control_group.h"
#include "projectfile/control_table.h"

#include <span>

namespace keldrin {

namespace {

enum class HeadForm {
    Quoted,        ///< "text"
    Choice,        ///< 'text' of an enumeration
    Integer,       ///< any integer
    Degrees,       ///< nearest integer, also of a missing value
    DegreesOrStar, ///< nearest integer, "*" for a missing value
    Number,        ///< by the descriptor
    List,          ///< numbers by the descriptor, joined by commas
};

/// `Name=value` and what stands after it.
struct HeadItem {
    const ControlRow *row;
    HeadForm form;
    std::string_view end;
    std::string_view descriptor = {};
};

constexpr std::string_view Comma = ",";
constexpr std::string_view CommaAndBlank = ", ";
constexpr std::string_view CommaAndLineEnd = LineEnd.size() == 2 ? ",\r\n" : ",\n";

constexpr std::string_view F12_1 = "(F12.1)";
constexpr std::string_view F12_2 = "(F12.2)";
constexpr std::string_view F12_3 = "(F12.3)";
constexpr std::string_view F14_1 = "(F14.1)";
constexpr std::string_view F14_3 = "(F14.3)";
constexpr std::string_view F14_4 = "(F14.4)";
constexpr std::string_view F14_5 = "(F14.5)";
constexpr std::string_view G11_4 = "(1P,G11.4E1)";

using enum HeadForm;

constexpr auto IdentityLine = std::to_array<HeadItem>({
    {controlRow("ProgramVersion"), Quoted, LineEnd},
});

constexpr auto SurveyLines = std::to_array<HeadItem>({
    {controlRow("JobName"), Quoted, LineEnd},
    {controlRow("JobArea"), Quoted, LineEnd},
    {controlRow("JobBy"), Quoted, LineEnd},
    {controlRow("JobFor"), Quoted, LineEnd},
    {controlRow("JobNumber"), Quoted, LineEnd},
    {controlRow("JobDate"), Quoted, LineEnd},
    {controlRow("LineName"), Quoted, LineEnd},
    {controlRow("LineNumber"), Number, LineEnd, F14_3},
    {controlRow("LineAzimuth"), Degrees, LineEnd},
    {controlRow("SurveyType"), Choice, Comma},
    {controlRow("TEMUnits"), Choice, Comma},
    {controlRow("LengthUnits"), Choice, Comma},
    {controlRow("StnScale"), Number, LineEnd, F14_4},
    {controlRow("XTxLength"), Number, Comma, F12_3},
    {controlRow("YTxLength"), Number, Comma, F12_3},
    {controlRow("TxAzimuth"), DegreesOrStar, Comma},
    {controlRow("NTxTurn"), Integer, LineEnd},
    {controlRow("TxFreq"), Number, Comma, G11_4},
    {controlRow("TxRamp"), Number, LineEnd, G11_4},
});

constexpr auto WaveformLines = std::to_array<HeadItem>({
    {controlRow("NTxWF"), Integer, CommaAndBlank},
    {controlRow("TxWFT0"), Number, LineEnd, F14_5},
    {controlRow("TxWFT"), List, LineEnd, F14_5},
    {controlRow("TxWFI"), List, LineEnd, F14_5},
});

constexpr auto InversionLines = std::to_array<HeadItem>({
    {controlRow("TxStn"), Number, Comma, F14_3},
    {controlRow("XTxCenter"), Number, Comma, F14_1},
    {controlRow("YTxCenter"), Number, LineEnd, F14_1},
    {controlRow("XRxOffset"), Number, Comma, F12_1},
    {controlRow("YRxOffset"), Number, Comma, F12_1},
    {controlRow("RxArea"), Number, LineEnd, G11_4},
    {controlRow("dpWeight"), Number, Comma, F12_3},
    {controlRow("dxWeight"), Number, Comma, F12_3},
    {controlRow("dzWeight"), Number, Comma, F12_3},
    {controlRow("dzzWeight"), Number, Comma, F12_3},
    {controlRow("Niteration"), Integer, LineEnd},
    {controlRow("ErrorFloor"), Number, Comma, F12_2},
    {controlRow("DataCutoff"), Number, LineEnd, F12_2},
});

constexpr auto BackgroundLines = std::to_array<HeadItem>({
    {controlRow("Res0Layer"), List, LineEnd, G11_4},
    {controlRow("Res0Error"), List, LineEnd, F12_2},
});

constexpr auto ThicknessLines = std::to_array<HeadItem>({
    {controlRow("Thk0Layer"), List, CommaAndLineEnd, F12_3},
    {controlRow("Thk0Error"), List, CommaAndLineEnd, F12_2},
});

std::string numberText(float value, const HeadItem &item) {
    switch (item.form) {
    case Degrees:
        return std::to_string(nearestInt(value));
    case DegreesOrStar:
        return Int_Text(nearestInt(value));
    default:
        return Number_Text(value, item.descriptor);
    }
}
std::string numberText(double value, const HeadItem &item) {
    return Number_Text(value, item.descriptor);
}
std::string numberText(int value, const HeadItem & /*item*/) {
    return std::to_string(value);
}

void appendText(std::string &out, std::string_view text, char preferred) {
    const char quote = quoteFor(text, preferred);
    out += quote;
    out += text;
    out += quote;
}

/// The value of one item; `count` elements of a list.
void appendValue(std::string &out, ControlGroup &group, const HeadItem &item, int count) {
    for (int i = 0; i < count; ++i) {
        out += i > 0 ? "," : "";
        visitControlElement(group, *item.row, i, [&](const auto &value) {
            if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(value)>>) {
                out += numberText(value, item);
            } else {
                appendText(out, value.view(), item.form == Choice ? '\'' : '"');
            }
        });
    }
}

void appendItems(std::string &out, ControlGroup &group, std::span<const HeadItem> items,
                 int listLength = 1) {
    for (const HeadItem &item : items) {
        out.append(item.row->name).append("=");
        appendValue(out, group, item, item.form == List ? listLength : 1);
        out += item.end;
    }
}

void appendHeader(std::string &out, const HeaderLines &header) {
    for (std::size_t i = 0; i < header.size(); ++i) {
        if (!header[i].isBlank()) {
            out.append("Header(").append(std::to_string(i + 1)).append(")=");
            appendText(out, header[i].view(), '\'');
            out += CommaAndLineEnd;
        }
    }
}

void appendBackgroundModel(std::string &out, ControlGroup &group) {
    const ControlValues &control = group.control;
    const int layers = std::min(control.NumLayer, MaxLayers);
    if (layers > 0 && control.Res0Layer[0] > 0.0F) {
        appendItems(out, group, BackgroundLines, layers);
    }
    if (layers > 1 && control.Thk0Layer[0] > 0.0F) {
        appendItems(out, group, ThicknessLines, layers - 1);
    }
}

} // namespace

void STD_Namelist_Write(SurveyModel &model, std::string &out) {
    ControlValues &control = model.control;
    control.ProgramVersion = ProgramIdentity;
    control.NumTW = model.SoundingCount > 0 ? model.sounding(1).NumTW : 0;
    ControlValues written = control; // enumerations are written from their tables
    setSurveyType(written, control.SurveyTypeIndex);
    setTEMUnits(written, control.TEMUnitsIndex);
    setLengthUnits(written, control.LengthUnitsIndex);
    ControlGroup group{written, {}};

    out.append("\"//").append(writerStamp(clockNow())).append("\"").append(LineEnd);
    out.append("&KELDRIN").append(LineEnd);
    appendItems(out, group, IdentityLine);
    appendHeader(out, written.Header);
    appendItems(out, group, SurveyLines);
    if (written.NTxWF > 3) { // so a waveform of 2 or 3 points lives in memory alone
        appendItems(out, group, WaveformLines, std::min(written.NTxWF, MaxWaveformPoints));
    }
    appendItems(out, group, InversionLines);
    appendBackgroundModel(out, group);
    out.append("NumStn=").append(Int_Text(model.SoundingCount));
    out.append(",NumTW=").append(Int_Text(written.NumTW)).append(LineEnd);
    out.append("/").append(LineEnd);
}

} // namespace keldrin
