#include "toolkit/desktop/message_list.h"

#include "toolkit/desktop/qt_text.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QVBoxLayout>

namespace keldrin {

namespace {

constexpr auto Name = "messages";

QDialog *makeWindow(QWidget *parent) {
    auto *dialog = new QDialog(parent);
    dialog->setObjectName(Name);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle("Log and messages");
    dialog->resize(640, 480);
    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(new QListWidget(dialog));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    layout->addWidget(buttons);
    return dialog;
}

} // namespace

void showMessageList(QWidget *window, const std::vector<std::string> &lines) {
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *parent = modal != nullptr ? modal : window; // a modal dialog blocks all but its own
    auto *dialog = parent->findChild<QDialog *>(Name, Qt::FindDirectChildrenOnly);
    if (dialog == nullptr) {
        dialog = makeWindow(parent);
    }
    auto *list = dialog->findChild<QListWidget *>();
    list->clear();
    for (const std::string &line : lines) {
        list->addItem(qtText(line));
    }
    list->scrollToBottom();
    dialog->show();
    dialog->raise();
}

} // namespace keldrin
