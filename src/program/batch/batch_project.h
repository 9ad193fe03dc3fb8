#pragma once

#include "model/survey_model.h"

#include <string>

namespace keldrin {

/// A project that a command works on. While it exists, the first error that is reported becomes
/// the reason of its failure, and no log files are written.
class BatchProject {
  public:
    BatchProject();
    ~BatchProject();
    BatchProject(const BatchProject &) = delete;
    BatchProject &operator=(const BatchProject &) = delete;

    /// Opens a project with its models. False when it cannot be read.
    bool open(const std::string &file);

    /// Notes why the command has failed; the first reason stands.
    void fail(const std::string &why);

    [[nodiscard]] bool failed() const { return !reason_.empty(); }

    /// One line of output: what was done, after the name of the file, or why not.
    void printLine(const std::string &file, const std::string &done) const;

    SurveyModel model;
    std::string path; ///< of the project, as it was found

  private:
    std::string reason_; ///< in one line; blank when all went well
};

} // namespace keldrin
