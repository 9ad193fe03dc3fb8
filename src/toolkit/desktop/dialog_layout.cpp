#include "toolkit/desktop/dialog_layout.h"

#include "toolkit/desktop/qt_text.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QStyle>

#include <algorithm>
#include <map>
#include <span>
#include <utility>

namespace keldrin {

namespace {

using Fields = std::span<DialogField>;

bool hasLook(const DialogField &field, StaticLook look) {
    return field.spec.kind == ControlKind::Static && field.spec.look == look;
}

bool beginsPart(const DialogField &field) {
    const bool title = hasLook(field, StaticLook::GroupTitle) && !field.spec.sameRow;
    return title || field.spec.part != DialogPart::Same;
}

bool beginsRow(const DialogField &field) {
    return !field.spec.sameRow;
}

// Cuts a list before each field that begins something; the first one always does.
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

// ---- One part: a grid of three columns for each field of a row

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

class PartGrid {
  public:
    PartGrid(QWidget *parent, QGridLayout *grid, QString title)
        : parent_(parent), grid_(grid), title_(std::move(title)) {}

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
    QString title_; ///< of the part
    int row_ = 0;
    int places_ = 0;                        ///< most fields of a row so far
    std::map<int, std::string_view> heads_; ///< above the fields of a place
    std::string_view rowName_;              ///< title or label that the present row began with
    QLabel *waiting_ = nullptr; ///< text that becomes the label of the field that follows
    std::string_view waitingName_;
    bool labelled_ = false;  ///< some row begins with a label
    bool stretches_ = false; ///< some field takes the width that is left
};

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

Qt::Alignment labelAlignment(const QWidget &widget) {
    const int wanted = widget.style()->styleHint(QStyle::SH_FormLayoutLabelAlignment);
    return (Qt::Alignment(wanted) & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
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

// A long text and an open list take the width that is left.
bool takesWidth(const ControlSpec &spec) {
    constexpr int longText = 17;
    return spec.rows > 0 ||
           (spec.kind == ControlKind::Text && (spec.length == 0 || spec.length >= longText));
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

// Buttons share the width, a bar takes what is left, and texts are as long as they are.
int stretchOf(const DialogField &field) {
    const ControlKind kind = field.spec.kind;
    const bool takes = kind == ControlKind::Button || kind == ControlKind::Trackbar ||
                       kind == ControlKind::Bar || hasLook(field, StaticLook::Help);
    return takes ? 1 : 0;
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

// ---- The parts of a dialog

// The title of a frame can stand in several controls; all of them are the frame then.
QGroupBox *frameOf(Fields &part) {
    if (!hasLook(part.front(), StaticLook::GroupTitle)) {
        return part.front().spec.partTitle.empty()
                   ? nullptr
                   : new QGroupBox(part.front().widget->parentWidget());
    }
    auto *frame = qobject_cast<QGroupBox *>(part.front().widget);
    part = part.subspan(1);
    while (!part.empty() && hasLook(part.front(), StaticLook::GroupTitle)) {
        delete part.front().widget;
        part.front().widget = frame;
        part = part.subspan(1);
    }
    return frame;
}

QString titleOf(Fields part) {
    const ControlSpec &first = part.front().spec;
    const bool own = hasLook(part.front(), StaticLook::GroupTitle);
    return qtText(own ? first.label : first.partTitle);
}

QGridLayout *layOutPart(Fields part) {
    const QString title = titleOf(part);
    QWidget *all = part.front().widget->parentWidget();
    QGroupBox *frame = frameOf(part);
    QWidget *box = frame != nullptr ? frame : new QWidget(all);
    auto *grid = new QGridLayout(box);
    if (frame != nullptr) {
        frame->setTitle(title);
    } else {
        grid->setContentsMargins(0, 0, 0, 0);
    }
    PartGrid(box, grid, title).fill(part);
    return grid;
}

/// Parts beside each other: two columns, each filled from above.
struct Halves {
    QBoxLayout *left = nullptr;
    QBoxLayout *right = nullptr;
};

Halves addHalves(QBoxLayout &body) {
    auto *halves = new QHBoxLayout;
    Halves made = {new QVBoxLayout, new QVBoxLayout};
    halves->addLayout(made.left, 1);
    halves->addLayout(made.right);
    body.addLayout(halves);
    return made;
}

void endHalves(Halves &halves) {
    if (halves.left != nullptr) {
        halves.left->addStretch(1);
        halves.right->addStretch(1);
        halves = {};
    }
}

Fields trailingButtons(Fields fields) {
    std::size_t count = 0;
    while (count < fields.size() &&
           fields[fields.size() - 1 - count].spec.kind == ControlKind::Button) {
        ++count;
    }
    return fields.last(count);
}

using GridRuns = std::vector<std::vector<QGridLayout *>>;

// A frame goes on with the run above it in the same place; anything else begins a new one.
void addToRun(GridRuns &runs, DialogPart place, DialogPart before, QGridLayout *grid) {
    if (runs.empty() || place != before) {
        runs.emplace_back();
    }
    runs.back().push_back(grid);
}

} // namespace

GridRuns layOutFields(std::vector<DialogField> &fields, QBoxLayout &body, QBoxLayout &buttons) {
    const Fields last = trailingButtons(fields);
    for (const DialogField &button : last) {
        buttons.addWidget(button.widget);
    }
    const Fields rest = Fields(fields).first(fields.size() - last.size());
    GridRuns runs;
    Halves halves;
    DialogPart before = DialogPart::Same;
    for (const Fields part : cutBefore(rest, beginsPart)) {
        const bool titled = hasLook(part.front(), StaticLook::GroupTitle);
        const DialogPart told = part.front().spec.part;
        const DialogPart place = titled && told == DialogPart::Same ? DialogPart::Frame : told;
        QGridLayout *grid = layOutPart(part);
        addToRun(runs, place, before, grid);
        before = place;
        if (place == DialogPart::LeftFrame || place == DialogPart::RightFrame) {
            halves = halves.left != nullptr ? halves : addHalves(body);
            (place == DialogPart::LeftFrame ? halves.left : halves.right)
                ->addWidget(grid->parentWidget());
        } else {
            endHalves(halves);
            body.addWidget(grid->parentWidget());
        }
    }
    endHalves(halves);
    body.addStretch(1);
    return runs;
}

void alignLabels(const std::vector<QGridLayout *> &grids) {
    int widest = 0;
    for (const QGridLayout *grid : grids) {
        for (int row = 0; row < grid->rowCount(); ++row) {
            const QLayoutItem *item = grid->itemAtPosition(row, labelColumn(0));
            const bool label = item != nullptr && grid->itemAtPosition(row, unitColumn(0)) != item;
            widest = std::max(widest, label ? item->sizeHint().width() : 0);
        }
    }
    for (QGridLayout *grid : grids) {
        grid->setColumnMinimumWidth(labelColumn(0), widest);
    }
}

} // namespace keldrin
