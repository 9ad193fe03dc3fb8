#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace keldrin {

/// A directory of a test's own, removed with everything in it.
class TemporaryDirectory {
  public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "keldrin-XXXXXX").string();
        if (::mkdtemp(name.data()) != nullptr) {
            root_ = name;
        }
    }
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    [[nodiscard]] std::string path() const { return root_; }
    [[nodiscard]] std::string path(std::string_view name) const {
        return root_ + "/" + std::string(name);
    }

    /// Names of the files in it, or in one of its directories; in no order.
    [[nodiscard]] std::vector<std::string> files(std::string_view name = ".") const {
        std::vector<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(path(name))) {
            if (entry.is_regular_file()) {
                names.push_back(entry.path().filename().string());
            }
        }
        return names;
    }

  private:
    std::string root_;
};

} // namespace keldrin
