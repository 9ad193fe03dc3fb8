// Any bytes as a station location file: what is kept is a table that rises with the station, and
// positions on it and beyond its ends are numbers.

#include "scratch_file.h"

#include "import/station_file.h"
#include "messages/message_log.h"
#include "physics/interpolation.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <string>

namespace {

using namespace keldrin;
using namespace keldrin::fuzz;

void requireTable(const StationTable &table) {
    constexpr std::size_t most = 2048;
    const std::size_t n = table.size();
    require(n >= 1 && n <= most);
    require(table.east.size() == n && table.north.size() == n && table.elev.size() == n);
    for (std::size_t i = 0; i < n; ++i) {
        require(std::isfinite(table.stn[i]) && std::isfinite(table.east[i]));
        require(i == 0 || table.stn[i - 1] < table.stn[i]);
    }
    require(!isPresent(table.stnAzimuth) || std::fabs(table.stnAzimuth) <= 180.001F);
    require(!isPresent(table.stnScale) || table.stnScale >= 0.0F);
}

void requirePositions(const StationTable &table) {
    const double first = table.stn.front();
    const double last = table.stn.back();
    for (const double station : {first - 1.0, first, (first + last) / 2.0, last, last + 1.0}) {
        require(std::isfinite(
            P1Intrp_R8(table.stn, table.elev, std::array<double, 2>{0.0, 0.0}, station)));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    messageLog() = MessageLog{};
    messageLog().quiet = true;
    const std::string path = scratchPath(".stn");
    store(path, {reinterpret_cast<const char *>(data), size});
    StationTable table;
    if (Stn_File_Input(path, table) == 0) {
        requireTable(table);
        requirePositions(table);
    } else {
        require(table.size() == 0);
    }
    return 0;
}
