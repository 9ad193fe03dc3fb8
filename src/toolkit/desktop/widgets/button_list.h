#pragma once

#include "toolkit/dialog_spec.h"

#include <vector>

class QAction;
class QPushButton;

namespace keldrin {

struct DialogField;

/// A button of a dialog's table that stands in the list which another one opens.
struct ListedButton {
    int id = 0;
    QAction *action = nullptr;
    QPushButton *opener = nullptr;
};

/// Gives the buttons of a dialog the lists that they open, with entries in the order of the table.
/// fields  all others of that dialog, the openers among them
std::vector<ListedButton> makeButtonLists(const DialogSpec &spec,
                                          const std::vector<DialogField> &fields);

} // namespace keldrin
