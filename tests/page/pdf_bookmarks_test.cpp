#include "page/surfaces/pdf_bookmarks.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <string>
#include <vector>

namespace keldrin {
namespace {

using testing::HasSubstr;

/// A PDF of two pages: objects 1 catalog, 2 tree of pages, 3 and 4 pages.
std::string twoPages() {
    const std::vector<std::string> objects = {
        "<<\n/Type /Catalog\n/Pages 2 0 R\n>>", "<<\n/Type /Pages\n/Kids [\n3 0 R\n4 0 R\n]\n>>",
        "<<\n/Type /Page\n/Parent 2 0 R\n>>", "<<\n/Type /Page\n/Parent 2 0 R\n>>"};
    std::string pdf = "%PDF-1.4\n";
    std::string table = "xref\n0 5\n0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        std::array<char, 32> entry{};
        std::snprintf(entry.data(), entry.size(), "%010zu 00000 n \n", pdf.size());
        table += entry.data();
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string start = std::to_string(pdf.size());
    return pdf + table + "trailer\n<<\n/Size 5\n/Root 1 0 R\n>>\nstartxref\n" + start + "\n%%EOF\n";
}

const std::vector<PdfBookmark> Bookmarks = {
    {"Plan", 0, 0}, {"Soundings", 0, 1}, {"S\xC3\xBC\x64", 1, 1}};

TEST(PdfBookmarks, LeadToTheirPagesAndStandBelowEachOther) {
    const std::string update = pdfBookmarks(twoPages(), Bookmarks);
    EXPECT_THAT(update, HasSubstr("1 0 obj\n<<\n/Outlines 5 0 R\n/PageMode /UseOutlines\n"
                                  "/Type /Catalog\n/Pages 2 0 R\n"));
    EXPECT_THAT(update, HasSubstr("/Title <FEFF0050006C0061006E>\n/Parent 5 0 R\n/Next 7 0 R\n"
                                  "/Dest [3 0 R /Fit]"));
    EXPECT_THAT(update, HasSubstr("/Parent 5 0 R\n/Prev 6 0 R\n/First 8 0 R\n/Last 8 0 R\n/Count -1"
                                  "\n/Dest [4 0 R /Fit]"));
    EXPECT_THAT(update, HasSubstr("/Title <FEFF005300FC0064>\n/Parent 7 0 R\n/Dest [4 0 R /Fit]"));
    EXPECT_THAT(update, HasSubstr("/Size 9\n"));
}

// Whatever is cut off or is another kind of file stays without bookmarks.
TEST(PdfBookmarks, NothingIsAppendedToWhatIsNoWholeFile) {
    const std::string whole = twoPages();
    EXPECT_NE(pdfBookmarks(whole, Bookmarks), "");
    EXPECT_EQ(pdfBookmarks(whole, {}), "");
    for (std::size_t size = 0; size + 8 < whole.size(); ++size) {
        const std::string update = pdfBookmarks(std::string_view(whole).substr(0, size), Bookmarks);
        EXPECT_EQ(update, "") << size;
    }
    for (std::size_t size = 1; size < whole.size(); ++size) {
        static_cast<void>(pdfBookmarks(std::string_view(whole).substr(size), Bookmarks));
    }
}

} // namespace
} // namespace keldrin
