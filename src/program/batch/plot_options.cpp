#include "program/batch/plot_options.h"

#include "page/hardcopy.h"
#include "program/batch/option_words.h"

#include <algorithm>

namespace keldrin {

namespace {

using Formats = std::span<const PlotFormat>;

bool readFormats(std::string_view list, Formats formats, PlotOptions &options) {
    options.formats.clear();
    for (const std::string_view name : listWords(list)) {
        const auto found = std::find_if(formats.begin(), formats.end(),
                                        [&](const PlotFormat &f) { return f.name == name; });
        if (found == formats.end()) {
            return false;
        }
        options.formats.push_back(*found);
    }
    return true;
}

std::string namesOf(Formats formats) {
    std::vector<std::string_view> names(formats.size());
    std::transform(formats.begin(), formats.end(), names.begin(),
                   [](const PlotFormat &format) { return format.name; });
    return inWords(names);
}

bool readSoundings(std::string_view list, PlotOptions &options) {
    options.soundings.clear();
    options.allSoundings = list == "all";
    if (options.allSoundings || list == "none") {
        return true;
    }
    const auto ranges = readOrdinalList(list);
    options.soundings = ranges.value_or(options.soundings);
    return ranges.has_value();
}

bool readStyle(std::string_view name, PlotOptions &options) {
    options.style = name == "presentation" ? PageStyle::Presentation : PageStyle::Standard;
    return name == "presentation" || name == "standard";
}

// An option with a value; empty when it can be used, else what is wrong.
std::string readValue(std::string_view option, std::string_view value, const FormatChoice &choice,
                      PlotOptions &options) {
    if (option == choice.option && !readFormats(value, choice.formats, options)) {
        return std::string(option) + " takes " + namesOf(choice.formats) +
               ", with commas between them";
    }
    if (option == "--soundings" && !readSoundings(value, options)) {
        return "--soundings takes ordinals from 1 such as 1-5,9, or all, or none";
    }
    if (option == "--style" && !readStyle(value, options)) {
        return "--style takes standard or presentation";
    }
    if (option == "--out") {
        options.outputDirectory = value;
    }
    return "";
}

bool isLinePage(std::string_view word) {
    return word.substr(0, 2) == "--" && std::find(LinePageNames.begin(), LinePageNames.end(),
                                                  word.substr(2)) != LinePageNames.end();
}

bool anyPdf(Formats formats) {
    return std::any_of(formats.begin(), formats.end(),
                       [](const PlotFormat &f) { return f.driver == DriverPdf; });
}

} // namespace

std::string readPlotOptions(CommandWords words, const FormatChoice &choice, PlotOptions &options) {
    options.formats = {choice.formats.front()};
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        std::string fault;
        if (word == "--out" || word == choice.option || word == "--soundings" ||
            word == "--style") {
            fault = i + 1 < words.size() ? readValue(word, words[i + 1], choice, options)
                                         : std::string(word) + " needs a value";
            ++i;
        } else if (isLinePage(word)) {
            options.pages.emplace_back(word.substr(2));
        } else if (word == "--all-in-one" && anyPdf(choice.formats)) {
            options.allInOne = true;
        } else if (word.substr(0, 2) == "--" && word.size() > 2) {
            fault = "unknown option " + std::string(word);
        } else if (word != "--") {
            options.files.emplace_back(word);
        }
        if (!fault.empty()) {
            return fault;
        }
    }
    if (options.allInOne && !anyPdf(options.formats)) {
        return "--all-in-one needs the format pdf";
    }
    if (options.pages.empty() && !options.allSoundings && options.soundings.empty()) {
        return "--soundings none without --plan, --profile or --section leaves nothing to plot";
    }
    return options.files.empty() ? "no project is named" : "";
}

} // namespace keldrin
