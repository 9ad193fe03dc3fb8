#include "keywords/sensors.h"

#include "base/ascii.h"

#include <algorithm>
#include <array>
#include <string>

namespace keldrin {
namespace {

struct SensorWord {
    std::string_view word;
    int index;
};

constexpr std::array<SensorWord, 3> Words = {
    {{"B", BSensor}, {"DIPOLE", DipoleSensor}, {"ANT", AntennaSensor}}};

} // namespace

int sensorIndexOf(std::string_view name) {
    const std::string upper = Str_Upper(name);
    std::string joined = upper;
    joined.erase(std::remove(joined.begin(), joined.end(), '/'), joined.end());
    if (holds(joined, "DBDT")) {
        return DBdtSensor;
    }
    for (const SensorWord &entry : Words) {
        if (holds(upper, entry.word)) {
            return entry.index;
        }
    }
    if (upper.find_first_of("-0123456789") == std::string::npos) {
        return 0;
    }
    return holds(upper, "TXREF") ? TxReference : DBdtSensor;
}

} // namespace keldrin
