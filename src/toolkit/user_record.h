#pragma once

#include "toolkit/backend.h"

#include <memory>
#include <string_view>

namespace keldrin {

struct DialogModel;

/// The key that starts and ends a record; never delivered, as KeyF2 is.
inline constexpr int KeyRecord = KeyWithCtrl | 'R';

/// Receives what the user does, in the program's order; called between backend and logic, whatever
/// the backend is.
class UserRecord {
  public:
    UserRecord() = default;
    UserRecord(const UserRecord &) = delete;
    UserRecord &operator=(const UserRecord &) = delete;
    virtual ~UserRecord() = default;

    /// An event is given to the logic.
    /// event  its place may be rounded to what is taken down, so that both are the same
    virtual void event(RawEvent &event) = 0;
    /// The second press of a double click was dropped.
    virtual void droppedPress(const RawEvent &event) = 0;
    virtual void rubberBand(RubberEnd &end) = 0;
    /// The close box was pressed during long work, and the logic gets the request now.
    virtual void closed() = 0;

    /// The user has changed a control.
    /// value    as a scenario enters it
    /// waiting  an event of it is queued, with which it counts
    virtual void entered(const DialogModel &dialog, int id, std::string_view value,
                         bool waiting) = 0;
    /// A button ends a dialog that blocks; in others it gives an event.
    virtual void pressed(const DialogModel &dialog, int id) = 0;

    virtual void chose(const std::optional<std::string> &path) = 0;
    virtual void answered(const BoxResult &answer) = 0;
    virtual void printed(const PrinterPage *page) = 0; ///< null: declined
    virtual void ran(const RunResult &result) = 0;
    virtual void askedForMessages() = 0;
};

/// Takes down what the user does from now on; null: nobody does. It must outlive its use.
/// toggle  called for KeyRecord
void ToolkitRecord(UserRecord *record, void (*toggle)());

} // namespace keldrin
