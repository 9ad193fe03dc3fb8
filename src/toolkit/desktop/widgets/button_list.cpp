#include "toolkit/desktop/widgets/button_list.h"

#include "toolkit/desktop/widgets/dialog_fields.h"

#include <QMenu>
#include <QPushButton>

#include <algorithm>

namespace keldrin {

namespace {

QPushButton *buttonOf(const std::vector<DialogField> &fields, int id) {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [=](const DialogField &f) { return f.spec.id == id; });
    return found != fields.end() ? qobject_cast<QPushButton *>(found->widget) : nullptr;
}

} // namespace

std::vector<ListedButton> makeButtonLists(const DialogSpec &spec,
                                          const std::vector<DialogField> &fields) {
    std::vector<ListedButton> listed;
    for (const ControlSpec &control : spec.controls) {
        QPushButton *opener = control.listedBy != 0 ? buttonOf(fields, control.listedBy) : nullptr;
        if (opener == nullptr) {
            continue;
        }
        if (opener->menu() == nullptr) {
            opener->setMenu(new QMenu(opener));
        }
        listed.push_back({control.id, opener->menu()->addAction(QString()), opener});
    }
    return listed;
}

} // namespace keldrin
