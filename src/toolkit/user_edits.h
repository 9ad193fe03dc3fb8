#pragma once

#include "toolkit/dialog_model.h"

#include <string_view>

namespace keldrin {

// What a user does to a shown dialog. Backends report it here; the model, the controls on the
// screen and the queue of events follow. A change of a field queues a field-change event while
// these are switched on and the dialog does not block.

/// Text in a field of text or numbers as it stands while it is being typed; nobody sees it before
/// it is committed.
void typeText(DialogModel &dialog, int id, std::string_view text);

/// Enter was pressed in a field.
void commitField(DialogModel &dialog, int id);

/// The focus leaves a field: what was typed is committed, or dropped if only Enter commits it.
void userLeaves(DialogModel &dialog, int id);

// Lists, check boxes, trackbars and tables act at once; a typed field is left before.
void userChooses(DialogModel &dialog, int id, int index);
void userChecks(DialogModel &dialog, int id, bool on);
void userMoves(DialogModel &dialog, int id, int position);
void userSelectsRows(DialogModel &dialog, int id, const TableRows &rows);

/// Presses an enabled button, typed fields being left just before. In a dialog that blocks it sets
/// `endButton`, else it queues the button's event; one that opens a list does neither. False when
/// there is no such button.
bool userPresses(DialogModel &dialog, int id);

/// The close box of the dialog, or Esc. A dialog on the root window's page only rolls up.
bool userCloses(DialogModel &dialog);

/// The close box of the root window during long work: the next wait for an event gives the request.
void userAsksToClose();

} // namespace keldrin
