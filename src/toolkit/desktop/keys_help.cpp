#include "toolkit/desktop/keys_help.h"

#include "toolkit/desktop/qt_text.h"
#include "toolkit/menu.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace keldrin {

namespace {

QString sectionText(const HelpSection &section) {
    QString title = qtText(section.title);
    title.front() = title.front().toUpper();
    QString text = "<tr><td colspan='2'><br><b>" + title.toHtmlEscaped() + "</b></td></tr>";
    for (const HelpEntry &key : section.entries) {
        text += "<tr><td>" + qtText(key.term).toHtmlEscaped() + "</td><td>&nbsp;&nbsp;" +
                qtText(key.text).toHtmlEscaped() + "</td></tr>";
    }
    return text;
}

QString keysText() {
    QString text = "<table cellspacing='4'>";
    for (const HelpSection &section : windowContent().keys) {
        text += sectionText(section);
    }
    return text + "</table>";
}

} // namespace

void showKeysHelp(QWidget *window) {
    constexpr auto name = "keys-help";
    auto *help = window->findChild<QDialog *>(name);
    if (help == nullptr) {
        help = new QDialog(window);
        help->setObjectName(name);
        help->setAttribute(Qt::WA_DeleteOnClose);
        help->setWindowTitle("Keys and mouse");
        auto *layout = new QVBoxLayout(help);
        layout->addWidget(new QLabel(keysText(), help));
        auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, help);
        QObject::connect(buttons, &QDialogButtonBox::rejected, help, &QDialog::close);
        layout->addWidget(buttons);
    }
    help->show();
    help->raise();
}

} // namespace keldrin
