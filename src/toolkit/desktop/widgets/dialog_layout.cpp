#include "toolkit/desktop/widgets/dialog_layout.h"

#include "toolkit/desktop/widgets/part_grid.h"
#include "toolkit/desktop/widgets/qt_text.h"

#include <QGridLayout>
#include <QGroupBox>

#include <algorithm>

namespace keldrin {

namespace {

bool beginsPart(const DialogField &field) {
    const bool title = hasLook(field, StaticLook::GroupTitle) && !field.spec.sameRow;
    return title || field.spec.part != DialogPart::Same;
}

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
    const bool fills = std::any_of(rest.begin(), rest.end(), [](const DialogField &field) {
        return field.spec.kind == ControlKind::Grid; // which takes all the height
    });
    if (!fills) {
        body.addStretch(1);
    }
    return runs;
}

} // namespace keldrin
