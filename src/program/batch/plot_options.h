#pragma once

#include "program/batch/command.h"
#include "sounding/plot_limits.h"
#include "text/ordinal_list.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// A kind of plot file.
struct PlotFormat {
    std::string_view name;      ///< as the user writes it
    std::string_view extension; ///< with its point
    int driver = 0;             ///< see hardcopy.h
    bool report = false;        ///< one document of all pages with a title page
};

/// The option that names the kinds of plot files, and those that there are; the first is made where
/// none is named.
struct FormatChoice {
    std::string_view option = "--format";
    std::span<const PlotFormat> formats;
};

/// The options that name pages of the whole line, which are part of their files' names too.
inline constexpr std::array<std::string_view, 3> LinePageNames = {"plan", "profile", "section"};

/// What is to be plotted of which projects.
struct PlotOptions {
    std::vector<PlotFormat> formats;
    bool allSoundings = true;
    std::vector<OrdinalRange> soundings; ///< in place of all
    std::vector<std::string> pages;      ///< of the whole line, as the options name them: "plan"
    PageStyle style = PageStyle::Standard;
    bool allInOne = false;       ///< the pages of a project in one PDF
    std::string outputDirectory; ///< blank: beside each project
    std::vector<std::string> files;
};

/// Reads [--format LIST] [--soundings LIST] [--style STYLE] [--plan] [--profile] [--section]
/// [--all-in-one] [--out DIR] PROJECT...
///
/// choice   in place of --format LIST; --all-in-one is known only where there is a PDF
/// returns  empty when the words can be used, else what is wrong with them
std::string readPlotOptions(CommandWords words, const FormatChoice &choice, PlotOptions &options);

} // namespace keldrin
