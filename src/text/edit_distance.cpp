#include "text/edit_distance.h"

#include "base/ascii.h"
#include "base/fixed_text.h"

#include <algorithm>
#include <string>
#include <vector>

namespace keldrin {

int Str_Edit_Distance(std::string_view a, std::string_view b) {
    const std::string from = Str_Upper(trimBlanks(a));
    const std::string to = Str_Upper(trimBlanks(b));
    if (from.empty() || to.empty()) {
        return 0;
    }
    // rows of the table of distances between heads: two back, the last and the current one
    std::vector<int> before(to.size() + 1);
    std::vector<int> last(to.size() + 1);
    std::vector<int> row(to.size() + 1);
    for (std::size_t j = 0; j <= to.size(); ++j) {
        row[j] = static_cast<int>(j);
    }
    for (std::size_t i = 1; i <= from.size(); ++i) {
        before.swap(last);
        last.swap(row);
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const int change = from[i - 1] == to[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
    }
    return row.back();
}

} // namespace keldrin
