#pragma once

#include "toolkit/desktop/widgets/dialog_fields.h"

#include <vector>

class QBoxLayout;
class QGridLayout;

namespace keldrin {

/// Lays out the fields of a dialog as their table says: parts below or beside each other, in each
/// of them a grid of labels, fields and units; a row without fields is filled as it comes. Makes
/// the labels that are seen, and names every field for those who cannot see them.
/// body     takes all but the buttons at the end of the table
/// buttons  takes those, in their order; stays empty when there are none
/// returns  the grids of frames that stand below each other, see alignLabels()
std::vector<std::vector<QGridLayout *>> layOutFields(std::vector<DialogField> &fields,
                                                     QBoxLayout &body, QBoxLayout &buttons);

} // namespace keldrin
