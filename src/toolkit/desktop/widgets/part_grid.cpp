#include "toolkit/desktop/widgets/part_grid.h"

#include "toolkit/desktop/widgets/qt_text.h"

#include <QGridLayout>
#include <QLabel>
#include <QStyle>

#include <algorithm>

namespace keldrin {

namespace {

bool beginsRow(const DialogField &field) {
    return !field.spec.sameRow;
}

constexpr int ColumnsPerField = 3;
constexpr int ToTheEnd = -1;

int labelColumn(int place) {
    return ColumnsPerField * place;
}
int fieldColumn(int place) {
    return ColumnsPerField * place + 1;
}
int unitColumn(int place) {
    return ColumnsPerField * place + 2;
}

Qt::Alignment labelAlignment(const QWidget &widget) {
    const int wanted = widget.style()->styleHint(QStyle::SH_FormLayoutLabelAlignment);
    return (Qt::Alignment(wanted) & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
}

// A long text and an open list take the width that is left.
bool takesWidth(const ControlSpec &spec) {
    constexpr int longText = 17;
    return spec.rows > 0 ||
           (spec.kind == ControlKind::Text && (spec.length == 0 || spec.length >= longText));
}

// Buttons share the width, a bar takes what is left, and texts are as long as they are.
int stretchOf(const DialogField &field) {
    const ControlKind kind = field.spec.kind;
    const bool takes = kind == ControlKind::Button || kind == ControlKind::Trackbar ||
                       kind == ControlKind::Bar || kind == ControlKind::Grid ||
                       hasLook(field, StaticLook::Help);
    return takes ? 1 : 0;
}

} // namespace

void PartGrid::add(Fields row) {
    const DialogField &first = row.front();
    if (hasLook(first, StaticLook::Head)) {
        addHeads(row);
    } else if (isField(first.spec.kind) || hasLook(first, StaticLook::RowTitle)) {
        addFieldRow(row);
    } else {
        addFilledRow(row);
    }
    ++row_;
}

void PartGrid::fill(Fields part) {
    const std::vector<Fields> rows = cutBefore(part, beginsRow);
    labelled_ = std::any_of(rows.begin(), rows.end(), [](Fields row) {
        const DialogField &first = row.front();
        const bool field = isField(first.spec.kind) && !first.spec.label.empty();
        return field || hasLook(first, StaticLook::RowTitle) || hasLook(first, StaticLook::Head);
    });
    for (const Fields row : rows) {
        add(row);
    }
    if (!stretches_) {
        grid_->setColumnStretch(ColumnsPerField * places_, 1);
    }
}

void PartGrid::addHead(QWidget *head, int place) {
    grid_->addWidget(head, row_, fieldColumn(place), Qt::AlignHCenter | Qt::AlignBottom);
}

void PartGrid::addHeads(Fields row) {
    int place = 0;
    for (DialogField &field : row) {
        heads_[place] = field.spec.label;
        addHead(field.widget, place++);
    }
}

// A head that stands there already is not said again.
void PartGrid::addHeadsAbove(Fields row) {
    int place = 0;
    bool any = false;
    for (DialogField &field : row) {
        if (!isField(field.spec.kind)) {
            continue;
        }
        if (field.spec.labelAbove && heads_[place] != field.spec.label) {
            heads_[place] = field.spec.label;
            field.label = new QLabel(parent_);
            field.label->setBuddy(field.widget);
            addHead(field.label, place);
            any = true;
        }
        ++place;
    }
    row_ += any ? 1 : 0;
}

void PartGrid::addLabel(DialogField &field, int place) {
    constexpr int gap = 12; // pixels between what belongs to different fields
    field.label = new QLabel(parent_);
    field.label->setBuddy(field.widget);
    field.label->setContentsMargins(place > 0 ? gap : 0, 0, 0, 0);
    grid_->addWidget(field.label, row_, labelColumn(place), labelAlignment(*parent_));
}

void PartGrid::nameField(const DialogField &field, int place) const {
    const auto head = heads_.find(place);
    const std::string_view own = field.spec.label.empty() ? rowName_ : field.spec.label;
    QString name = qtText(field.spec.labelAbove ? rowName_ : own);
    if (head != heads_.end()) {
        name += (name.isEmpty() ? "" : " ") + qtText(head->second);
    }
    field.widget->setAccessibleName(name);
}

void PartGrid::addTitle(DialogField &field) {
    rowName_ = field.spec.label;
    waiting_ = qobject_cast<QLabel *>(field.widget);
    waitingName_ = field.spec.label;
    grid_->addWidget(field.widget, row_, labelColumn(0), labelAlignment(*parent_));
}

void PartGrid::addField(DialogField &field, int place, bool last) {
    const ControlSpec &spec = field.spec;
    if (waiting_ != nullptr) {
        waiting_->setBuddy(field.widget);
        rowName_ = waitingName_;
        waiting_ = nullptr;
    }
    const bool takesRest = takesWidth(spec);
    const bool toTheEnd = last && (takesRest || spec.kind == ControlKind::List);
    const int column = place == 0 && !labelled_ ? labelColumn(0) : fieldColumn(place);
    grid_->addWidget(field.widget, row_, column, 1,
                     toTheEnd ? ToTheEnd : unitColumn(place) - column,
                     takesRest || isNumberField(spec.kind) ? Qt::Alignment() : Qt::AlignLeft);
    if (takesRest && !toTheEnd) {
        grid_->setColumnStretch(fieldColumn(place), 1);
    }
    stretches_ = stretches_ || takesRest;
    nameField(field, place);
}

void PartGrid::addFieldRow(Fields row) {
    addHeadsAbove(row);
    int place = -1;
    std::string_view label;
    for (DialogField &field : row) {
        const bool last = &field == &row.back();
        if (hasLook(field, StaticLook::RowTitle)) {
            addTitle(field);
        } else if (!isField(field.spec.kind)) {
            grid_->addWidget(field.widget, row_, unitColumn(place), 1, last ? ToTheEnd : 1);
        } else {
            ++place;
            const std::string_view own = field.spec.label;
            if (!field.spec.labelAbove && !own.empty() && own != label) {
                addLabel(field, place);
                rowName_ = own;
            }
            label = own;
            addField(field, place, last);
        }
    }
    places_ = std::max(places_, place + 1);
}

void PartGrid::addFilledRow(Fields row) {
    auto *line = new QHBoxLayout;
    grid_->addLayout(line, row_, 0, 1, ToTheEnd);
    int stretch = 0;
    for (DialogField &field : row) {
        line->addWidget(field.widget, stretchOf(field));
        stretch += stretchOf(field);
        if (field.spec.kind == ControlKind::Trackbar) {
            field.widget->setAccessibleName(title_);
        } else if (field.spec.kind == ControlKind::Grid) {
            field.widget->setAccessibleName(qtText(field.spec.label));
        } else if (isField(field.spec.kind)) {
            field.widget->setAccessibleName(qtText(rowName_));
        } else if (!field.spec.label.empty() && field.spec.look != StaticLook::Unit) {
            rowName_ = field.spec.label;
        }
    }
    if (stretch == 0) {
        line->addStretch(1);
    }
    const bool text = row.size() == 1 && hasLook(row.front(), StaticLook::Text);
    waiting_ = text ? qobject_cast<QLabel *>(row.front().widget) : nullptr;
    waitingName_ = text ? row.front().spec.label : "";
}

void alignLabels(const std::vector<QGridLayout *> &grids) {
    int widest = 0;
    for (const QGridLayout *grid : grids) {
        const int end = std::min(unitColumn(0), grid->columnCount() - 1);
        for (int row = 0; row < grid->rowCount(); ++row) {
            const QLayoutItem *item = grid->itemAtPosition(row, labelColumn(0));
            const bool label = item != nullptr && grid->itemAtPosition(row, end) != item;
            widest = std::max(widest, label ? item->sizeHint().width() : 0);
        }
    }
    for (QGridLayout *grid : grids) {
        grid->setColumnMinimumWidth(labelColumn(0), widest);
    }
}

} // namespace keldrin
