#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace keldrin {

/// An entry of a PDF's table of contents.
struct PdfBookmark {
    std::string text;     ///< UTF-8
    int level = 0;        ///< 0, or 1 for one below the last of level 0
    std::size_t page = 0; ///< that it leads to, from 0
};

/// What is to be appended to a PDF so that it has these bookmarks: an incremental update (ISO
/// 32000-1, 7.5.6 and 12.3.3), which leaves every byte before it as it was. Those of level 1 are
/// folded away at first.
/// pdf      with a cross-reference table and one level of pages, as Qt writes it
/// returns  blank where there are no bookmarks, or the file is not of this kind
std::string pdfBookmarks(std::string_view pdf, std::span<const PdfBookmark> bookmarks);

} // namespace keldrin
