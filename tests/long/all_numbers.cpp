// Every single-precision number through every form that project and model files use:
//
//   keldrin_all_numbers [EVERY]     one number in EVERY; all of them without it
//
// The text must have the digits that the standard library gives, must be read back as the number
// nearest to them, and must come out the same when that number is written again: a project that is
// read and written a hundred times stays as it is. Prints a line for each form; exit code 1 if any
// number failed.

#include "base/free_form.h"
#include "base/number_text.h"
#include "base/real.h"
#include "projectfile/data_columns.h"
#include "projectfile/model_columns.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using keldrin::EditDescriptor;
using Form = keldrin::EditDescriptor::Form;

bool sameForm(const EditDescriptor &a, const EditDescriptor &b) {
    return a.form == b.form && a.width == b.width && a.digits == b.digits && a.scale == b.scale &&
           a.exponentDigits == b.exponentDigits;
}

/// The forms of real columns, each once.
std::vector<EditDescriptor> formsOfFiles() {
    std::vector<EditDescriptor> forms;
    const auto add = [&](const auto &columns) {
        for (const keldrin::TableColumn &column : columns) {
            const bool known = std::any_of(forms.begin(), forms.end(), [&](const auto &form) {
                return sameForm(form, column.edit);
            });
            if (column.edit.form != Form::None && !known) {
                forms.push_back(column.edit);
            }
        }
    };
    add(keldrin::DataColumns);
    add(keldrin::ModelColumns);
    return forms;
}

/// The library's text of a number with the digits of a form; a zero follows it.
std::string_view libraryText(float value, const EditDescriptor &edit, std::array<char, 128> &room) {
    const bool fixed = edit.form == Form::Fixed;
    const int decimals = edit.form == Form::Scientific || fixed ? edit.digits : edit.digits - 1;
    const auto format = fixed ? std::chars_format::fixed : std::chars_format::scientific;
    const auto end =
        std::to_chars(room.data(), room.data() + room.size() - 1, value, format, decimals);
    *end.ptr = '\0';
    return {room.data(), static_cast<std::size_t>(end.ptr - room.data())};
}

/// What is wrong with a text as a form of the number that `library` says; null when nothing is.
const char *faultOf(const std::string &text, const char *library, const EditDescriptor &edit) {
    float wanted = std::strtof(library, nullptr);
    const bool isDenormal = wanted != 0.0F && std::fabs(wanted) < FLT_MIN;
    if (isDenormal) {
        wanted = 0.0F; // as they count
    }
    float read = 0.0F;
    const bool isRead = keldrin::readFreeForm(text, read) == keldrin::FreeForm::Value;
    if (!isRead && std::isfinite(wanted)) {
        return "is not read back";
    }
    if (!isRead) {
        return nullptr; // its digits are above the largest number
    }
    if (read != wanted) {
        return "has other digits than the library's text";
    }
    if (isDenormal || !keldrin::isPresent(read)) {
        return nullptr; // not present: its digits are those of the mark of a missing value
    }
    std::string again;
    keldrin::appendNumberText(again, read, edit);
    return again == text ? nullptr : "is written differently the second time";
}

/// Writes numbers in one form and checks them. Neighbours that share both texts with the number
/// before them, as most do, share its answer.
class FormCheck {
  public:
    explicit FormCheck(const EditDescriptor &edit) : edit_(edit) {}

    /// What went wrong with a number; null when nothing did. `fits`: it has no asterisks.
    const char *failureOf(float value, bool &fits) {
        text_.clear();
        keldrin::appendNumberText(text_, value, edit_);
        fits = text_.find('*') == std::string::npos;
        if (!fits) {
            return nullptr;
        }
        const std::string_view library = libraryText(value, edit_, room_);
        if (text_ != lastText_ || library != lastLibrary_) {
            fault_ = faultOf(text_, library.data(), edit_);
            lastText_ = text_;
            lastLibrary_ = library;
        }
        return fault_;
    }

  private:
    const EditDescriptor &edit_;
    std::array<char, 128> room_{};
    std::string text_;
    std::string lastText_;
    std::string lastLibrary_;
    const char *fault_ = nullptr;
};

struct Count {
    std::atomic<std::uint64_t> numbers = 0;
    std::atomic<std::uint64_t> asterisks = 0;
    std::atomic<std::uint64_t> failures = 0;
};

void tryNumbers(const EditDescriptor &edit, std::uint64_t first, std::uint64_t step, Count &count) {
    constexpr std::uint64_t patterns = std::uint64_t{1} << 32U;
    constexpr std::uint64_t mostTold = 10;
    FormCheck check(edit);
    std::uint64_t numbers = 0;
    std::uint64_t asterisks = 0;
    for (std::uint64_t bits = first; bits < patterns; bits += step) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        if (!std::isfinite(value)) {
            continue;
        }
        ++numbers;
        bool fits = true;
        const char *failure = check.failureOf(value, fits);
        asterisks += fits ? 0 : 1;
        if (failure != nullptr && ++count.failures <= mostTold) {
            std::printf("%08x (%.9g) %s\n", static_cast<unsigned>(bits), static_cast<double>(value),
                        failure);
        }
    }
    count.numbers += numbers;
    count.asterisks += asterisks;
}

std::string nameOf(const EditDescriptor &edit) {
    const char *letters = edit.form == Form::Fixed ? "F" : edit.form == Form::General ? "G" : "ES";
    return (edit.scale == 1 ? "1P," : "") + std::string(letters) + std::to_string(edit.width) +
           "." + std::to_string(edit.digits);
}

} // namespace

int main(int argc, char **argv) {
    const std::uint64_t every = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1;
    if (every == 0) {
        std::fprintf(stderr, "usage: keldrin_all_numbers [EVERY]\n");
        return 2;
    }
    bool failed = false;
    for (const EditDescriptor &edit : formsOfFiles()) {
        Count count;
        const unsigned threads = std::max(1U, std::thread::hardware_concurrency());
        std::vector<std::thread> workers;
        for (unsigned i = 0; i < threads; ++i) {
            workers.emplace_back([&, i] { tryNumbers(edit, i * every, threads * every, count); });
        }
        for (std::thread &worker : workers) {
            worker.join();
        }
        std::printf("%-10s %llu numbers, %llu do not fit, %llu failures\n", nameOf(edit).c_str(),
                    static_cast<unsigned long long>(count.numbers),
                    static_cast<unsigned long long>(count.asterisks),
                    static_cast<unsigned long long>(count.failures));
        std::fflush(stdout);
        failed = failed || count.failures > 0;
    }
    return failed ? 1 : 0;
}
