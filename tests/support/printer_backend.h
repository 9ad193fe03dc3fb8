#pragma once

#include "page/surfaces/page_transcript.h"
#include "toolkit/scripted/answering_backend.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace keldrin {

/// A toolkit without a user whose printer takes paper of any size and keeps what was printed.
class PrinterBackend : public AnsweringBackend {
  public:
    class Job : public RecordSurface {
      public:
        explicit Job(PrinterBackend &owner) : owner_(owner) {}
        bool end() override {
            owner_.printed = pageTranscript(*this);
            return owner_.works;
        }

      private:
        PrinterBackend &owner_;
    };

    std::unique_ptr<Surface> printer(PrinterPage &page) override {
        page = paper;
        return accepts ? std::make_unique<Job>(*this) : nullptr;
    }
    void trace(std::string_view kind, std::string_view text) override {
        if (kind != "info") {
            traced.push_back(std::string(kind) + " " + std::string(text));
        }
    }

    PrinterPage paper = {720.0, 1440.0};
    bool accepts = true;
    bool works = true;
    std::vector<std::string> printed;
    std::vector<std::string> traced; ///< without the lines of the log
};

} // namespace keldrin
