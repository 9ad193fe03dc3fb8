// Prints the tables of the program that the manual shows, one after the other:
//
//   = NAME
//   first cell <tab> second cell ...      the headings, then one line for each row
//
// tools/manual/tables puts them into the Markdown of the manual.
#include "base/ascii.h"
#include "base/number_text.h"
#include "base/program_help.h"
#include "conditioning/auto_skip_dialog.h"
#include "conditioning/configuration_dialog.h"
#include "conditioning/data_input_dialog.h"
#include "conditioning/line_azimuth_dialog.h"
#include "export/export_fields.h"
#include "import/amira/file.h"
#include "import/avg_file.h"
#include "keywords/group_readers.h"
#include "line/plan_limits_dialog.h"
#include "line/section_limits_dialog.h"
#include "projectfile/control_group.h"
#include "projectfile/data_columns.h"
#include "projectfile/model_columns.h"
#include "review/copy_marks_dialog.h"
#include "shell/export_dialog.h"
#include "shell/menu.h"
#include "shell/window_keys.h"
#include "sounding/plot_limits_dialog.h"
#include "toolkit/scripted/exit_codes.h"
#include "toolkit/scripted/script.h"
#include "toolkit/scripted/script_keys.h"

#include <array>
#include <cstdio>
#include <initializer_list>
#include <limits>
#include <string>
#include <string_view>

namespace {

using namespace keldrin;

using Cells = std::initializer_list<std::string>;

void begin(std::string_view name, Cells headings);

void row(Cells cells) {
    std::string line;
    for (const std::string &cell : cells) {
        line.append(line.empty() && &cell == cells.begin() ? "" : "\t").append(cell);
    }
    std::printf("%s\n", line.c_str());
}

void begin(std::string_view name, Cells headings) {
    std::printf("= %.*s\n", static_cast<int>(name.size()), name.data());
    row(headings);
}

/// A word as it stands in a file.
std::string code(std::string_view text) {
    return text.empty() ? "" : "`" + std::string(text) + "`";
}

std::string joined(std::span<const std::string_view> words) {
    std::string text;
    for (const std::string_view word : words) {
        text.append(text.empty() ? "" : ", ").append(code(word));
    }
    return text;
}

std::string defaultText(double value) {
    return isPresent(value) ? messageNumber(value) : "missing";
}

std::string range(double low, double high, bool lowExcluded = false) {
    const bool hasLow = low > -1.0E30;
    const bool hasHigh = high < 1.0E30 && high != std::numeric_limits<int>::max();
    if (hasLow && hasHigh) {
        return (lowExcluded ? "above " : "") + messageNumber(low) + " to " + messageNumber(high);
    }
    if (hasLow) {
        return (lowExcluded ? "above " : "from ") + messageNumber(low);
    }
    return hasHigh ? "up to " + messageNumber(high) : "";
}

std::string limitsText(const Limits &limits) {
    std::string text = range(limits.low, limits.high, limits.lowExcluded);
    text = (limits.magnitude == Magnitude::Off || text.empty() ? "" : "size ") + text +
           std::string(limits.unit);
    if (limits.refused) {
        text.append(", else not taken");
    } else if (limits.forcedLow == limits.forcedHigh) {
        text.append(", else ").append(messageNumber(limits.forcedHigh));
    } else if (limits.forcedHigh != limits.high) {
        text.append(", above it ").append(messageNumber(limits.forcedHigh));
    }
    return text;
}

/// The value without a record: a number as it is, a word as it stands in a file.
std::string initialText(const std::string &value) {
    if (value.empty()) {
        return "none";
    }
    const bool isNumber = isDigit(value.front()) || value.front() == '-';
    return isNumber ? value : code(value);
}

std::string formatText(const EditDescriptor &edit) {
    using Form = EditDescriptor::Form;
    if (edit.form == Form::None) {
        return "integer";
    }
    const std::string digits = std::to_string(edit.digits);
    return edit.form == Form::Fixed
               ? digits + " decimals"
               : std::to_string(edit.digits + (edit.form == Form::Scientific)) + " digits";
}

std::string emptyText(EmptyCell empty) {
    switch (empty) {
    case EmptyCell::IfMissing:
        return "missing";
    case EmptyCell::UnlessAboveZero:
        return "not above 0";
    default:
        return "never";
    }
}

std::string unitText(std::string_view unit) {
    return unit == column_units::UnitOfData ? code(unit) : std::string(unit);
}

void printColumns(std::string_view name, std::span<const TableColumn> columns) {
    begin(name, {"Column", "Required", "Default", "Written with", "Empty if", "Unit"});
    for (const TableColumn &column : columns) {
        row({code(column.written), column.required ? "yes" : "no", defaultText(column.defaultValue),
             formatText(column.edit), emptyText(column.empty), unitText(column.unit)});
    }
}

std::string valueText(float value) {
    return defaultText(static_cast<double>(value));
}
std::string valueText(double value) {
    return defaultText(value);
}
std::string valueText(int value) {
    return std::to_string(value);
}
template <std::size_t N>
std::string valueText(const FixedText<N> &value) {
    return value.isBlank() ? "blank" : code(value.view());
}

void printControl() {
    begin("control", {"Value", "Kind", "Range", "Default"});
    SurveyModel model;
    ControlGroup group{model.control, {}};
    for (const ControlRow &value : ControlTable) {
        const int length = arrayLength(value);
        std::string kind = holdsText(value) ? "text" : "number";
        std::string first;
        visitControlElement(group, value, 0, [&](const auto &variable) {
            first = valueText(variable);
            if (std::is_same_v<decltype(variable), const int &>) {
                kind = "integer";
            }
        });
        if (length > 0) {
            kind = "up to " + std::to_string(length) + " " + kind + "s";
        }
        const bool forced = value.range.low <= value.range.high;
        row({code(value.name), kind, forced ? range(value.range.low, value.range.high) : "",
             first});
    }
}

/// What a keyword takes; in general words where it has a form of its own.
std::string_view formText(const KeywordRow &keyword) {
    if (!keyword.form.empty()) {
        return keyword.form;
    }
    return !keyword.names.empty()               ? "name"
           : limitsText(keyword.limits).empty() ? "text"
                                                : "numbers";
}

void printKeywords() {
    for (const GroupTable *group : keywordGroups()) {
        begin("keywords-" + std::string(group->name), {"Keyword", "Value", "Range", "Default"});
        for (const KeywordRow &keyword : group->rows) {
            const std::string numbered = keyword.contained ? "*n*" : "";
            const std::string bounds =
                keyword.names.empty() ? limitsText(keyword.limits) : joined(keyword.names);
            const std::string initial =
                keyword.initial == nullptr ? std::string() : keyword.initial(keyword);
            row({code(std::string(group->name) + "." + std::string(keyword.keyword)) + numbered,
                 std::string(formText(keyword)), bounds, initialText(initial)});
        }
    }
}

/// What a control takes: "number, 0.1 to 9999.9 %".
std::string takenBy(const ControlSpec &control) {
    constexpr auto kinds = std::to_array<std::string_view>(
        {"shows only", "text", "integer", "number", "number", "on or off", "choice", "slider",
         "button", "list", "progress bar"});
    const auto kind = static_cast<std::size_t>(control.kind);
    std::string text(kind < kinds.size() ? kinds[kind] : "other");
    if (control.kind == ControlKind::Text && control.length > 0) {
        text.append(" of up to ").append(std::to_string(control.length)).append(" characters");
    }
    if (control.kind != ControlKind::Trackbar && control.limits.low <= control.limits.high) {
        text.append(", ").append(range(control.limits.low, control.limits.high));
    }
    return text.append(control.unit.empty() ? "" : " ").append(control.unit);
}

void printDialog(const DialogSpec &dialog) {
    begin("dialog-" + std::to_string(dialog.number),
          {"Control", "Field", "Takes", "Value in the project"});
    for (const ControlSpec &control : dialog.controls) {
        if (control.kind == ControlKind::Static || control.kind == ControlKind::Button) {
            continue;
        }
        const std::string_view label = control.name.empty() ? control.label : control.name;
        row({std::to_string(control.id), std::string(label), takenBy(control), code(control.key)});
    }
}

void printDialogs() {
    for (const DialogSpec *dialog : std::initializer_list<const DialogSpec *>{
             &DataInputDialog, &LineAzimuthDialog, &ConfigurationDialog, &AutoSkipDialog,
             &CopyMarksDialog, &PlotLimitsDialog, &sectionLimitsDialog(), &profileLimitsDialog(),
             &PlanLimitsDialog, &exportDialog()}) {
        printDialog(*dialog);
    }
}

void printFields() {
    begin("export-fields",
          {"CSV table", "CSV name", "GDF2 name", "GDF2 format", "GDF2 null", "Unit", "Meaning"});
    for (const ExportField &field : exportFields()) {
        constexpr std::string_view tables[] = {"soundings", "windows", "layers"};
        const std::string_view table = tables[static_cast<std::size_t>(field.of)];
        const std::string_view unit = field.unit == LengthUnit    ? "m or ft"
                                      : field.unit == StationUnit ? "m or ft, or none"
                                                                  : field.unit;
        row({field.csv.empty() ? "" : std::string(table), code(field.csv), code(field.gdf2),
             code(field.format), code(field.null), std::string(unit), std::string(field.words)});
    }
}

std::string olderNames(std::span<const LabelAlias> aliases, std::string_view name) {
    std::string older;
    for (const LabelAlias &alias : aliases) {
        if (alias.variable == name) {
            older.append(older.empty() ? "" : ", ").append(code(alias.label));
        }
    }
    return older;
}

void printAvg() {
    begin("avg-columns", {"Column", "Older names"});
    for (const std::string_view name : AvgNames) {
        row({code(name), olderNames(avgAliases(), name)});
    }
}

void printAmira() {
    begin("amira-columns", {"Column"});
    for (const std::string_view name : AmiraNames) {
        row({code(name)});
    }
    begin("amira-keywords", {"Keyword", "Older names", "Range", "Default"});
    for (const AmiraKeywordFacts &facts : amiraKeywords()) {
        row({code(facts.keyword), olderNames(amiraAliases(), facts.keyword),
             facts.least > 0.0F ? "from " + messageNumber(facts.least) : "",
             initialText(facts.initial)});
    }
}

void printScenario() {
    begin("scenario-verbs", {"Line", "Group"});
    constexpr std::string_view groups[] = {"set-up", "event", "dialog", "answer", "check"};
    for (const ScriptVerb &verb : scriptVerbs()) {
        const std::string line =
            std::string(verb.name) + (verb.form.empty() ? "" : " ") + std::string(verb.form);
        row({code(line), std::string(groups[static_cast<std::size_t>(verb.group)])});
    }
    begin("scenario-keys", {"Key"});
    for (const std::string_view key : scriptKeyNames()) {
        row({code(key)});
    }
}

std::string keyText(int key) {
    const std::string letter(1, static_cast<char>(key & 0xFF));
    return key == 0 ? "" : ((key & KeyWithCtrl) != 0 ? "Ctrl+" : "") + letter;
}

void printMenu() {
    begin("menu", {"Entry", "Number", "Key"});
    for (const MenuEntry &entry : MenuEntries) {
        std::string label;
        for (const char letter : entry.label) {
            label += letter == '&' ? std::string() : std::string(1, letter);
        }
        row({label, std::to_string(entry.command), keyText(entry.shortcut)});
    }
}

void printHelp(std::string_view name, const HelpSection &section, Cells headings) {
    begin(name, headings);
    for (const HelpEntry &entry : section.entries) {
        row({std::string(entry.term), std::string(entry.text)});
    }
}

} // namespace

int main() {
    printColumns("data-columns", DataColumns);
    printColumns("model-columns", ModelColumns);
    printControl();
    printKeywords();
    printFields();
    printAvg();
    printAmira();
    printScenario();
    printDialogs();
    printMenu();
    for (std::size_t i = 0; i < KeySections.size(); ++i) {
        constexpr std::string_view names[] = {"keys-main", "keys-review", "keys-pages",
                                              "keys-dialogs"};
        printHelp(names[i], KeySections[i], {"Key or mouse", "What it does"});
    }
    printHelp("exit-codes", ExitCodeSection, {"Exit code", "Meaning"});
    return std::fflush(stdout) == 0 ? 0 : 1;
}
