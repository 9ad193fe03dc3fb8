#pragma once

#include "toolkit/desktop/widgets/dialog_fields.h"

#include <map>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

class QGridLayout;

namespace keldrin {

using Fields = std::span<DialogField>;

/// True for a static of that look.
inline bool hasLook(const DialogField &field, StaticLook look) {
    return field.spec.kind == ControlKind::Static && field.spec.look == look;
}

/// Cuts a list before each field that begins something; the first one always does.
template <class Begins>
std::vector<Fields> cutBefore(Fields fields, Begins begins) {
    std::vector<Fields> pieces;
    for (std::size_t first = 0; first < fields.size();) {
        std::size_t end = first + 1;
        while (end < fields.size() && !begins(fields[end])) {
            ++end;
        }
        pieces.push_back(fields.subspan(first, end - first));
        first = end;
    }
    return pieces;
}

/// One part of a dialog: a grid of three columns for each field of a row, its label, itself and its
/// unit. A row without fields is filled as it comes.
class PartGrid {
  public:
    /// title  of the part, for those who cannot see it
    PartGrid(QWidget *parent, QGridLayout *grid, QString title)
        : parent_(parent), grid_(grid), title_(std::move(title)) {}

    /// Places the fields and makes the labels that are seen.
    void fill(Fields part);

  private:
    void add(Fields row);
    void addHeads(Fields row);
    void addHeadsAbove(Fields row);
    void addFieldRow(Fields row);
    void addFilledRow(Fields row);
    void addTitle(DialogField &field);
    void addField(DialogField &field, int place, bool last);
    void addLabel(DialogField &field, int place);
    void addHead(QWidget *head, int place);
    void nameField(const DialogField &field, int place) const;

    QWidget *parent_;
    QGridLayout *grid_;
    QString title_;
    int row_ = 0;
    int places_ = 0;                        ///< most fields of a row so far
    std::map<int, std::string_view> heads_; ///< above the fields of a place
    std::string_view rowName_;              ///< title or label that the current row began with
    QLabel *waiting_ = nullptr; ///< text that becomes the label of the field that follows
    std::string_view waitingName_;
    bool labelled_ = false;  ///< some row begins with a label
    bool stretches_ = false; ///< some field takes the width that is left
};

/// Makes the labels at the left of some grids equally wide, so that their fields are in line.
void alignLabels(const std::vector<QGridLayout *> &grids);

} // namespace keldrin
