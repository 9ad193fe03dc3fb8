#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

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

  private:
    std::string root_;
};

} // namespace keldrin
