#pragma once

#include "keywords/keyword_table.h"
#include "keywords/record.h"
#include "support/message_recorder.h"
#include "text/enumeration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace keldrin {

inline constexpr int DataFile = 2;
inline constexpr int SideFile = 1;

/// Reads records into fresh metadata and collects what is reported.
class KeywordTest : public ::testing::Test {
  protected:
    KeywordTest() { enumerationMemo().entries.clear(); }
    ~KeywordTest() override { enumerationMemo().entries.clear(); }

    int read(std::string_view line, int level = DataFile) {
        return MDP_Read_Record(metadata, ++records, line, level);
    }
    void readAll(std::initializer_list<std::string_view> lines, int level = DataFile) {
        for (const std::string_view line : lines) {
            read(line, level);
        }
    }
    void forget() {
        metadata = Metadata{};
        messages.errors.clear();
        messages.warnings.clear();
        records = 0;
    }
    void expectSilence() const {
        EXPECT_THAT(messages.errors, ::testing::IsEmpty());
        EXPECT_THAT(messages.warnings, ::testing::IsEmpty());
    }

    Metadata metadata;
    MessageRecorder messages;
    int records = 0;
};

/// One element of a number field, as a double.
template <auto Member, std::size_t Index = 0>
double at(Metadata &metadata) {
    return static_cast<double>(elementsOf(memberIn(metadata, Member).value)[Index]);
}

/// A record and the number that it must leave in a field.
struct NumberCase {
    std::string_view line;
    double (*field)(Metadata &metadata);
    double expected;
    int reports = 0; ///< errors and warnings
};

/// Equal to the last digits of a 32-bit real.
inline ::testing::Matcher<double> isNumber(double expected) {
    return ::testing::DoubleNear(expected, std::fabs(expected) * 1.0E-6);
}

/// A record and the text that it must leave in a field.
struct TextCase {
    std::string_view line;
    std::string (*field)(Metadata &metadata);
    std::string_view expected;
};

template <auto Member, std::size_t Index = 0>
std::string textAt(Metadata &metadata) {
    return elementsOf(memberIn(metadata, Member).value)[Index].str();
}

} // namespace keldrin
