// Pictures of every dialog, for the eye: dialog_pictures DIRECTORY [POINTS] [dark]
//
// Each dialog is shown with the values of a survey, one of its fields unreadable, and written as
// dialog-NUMBER.png; a panel together with the window that it lies upon.

#include "desktop/dialog_values.h"
#include "support/dialog_tables.h"
#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/toolkit.h"
#include "toolkit/user_edits.h"

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QPainter>
#include <QStyleFactory>
#include <QTest>

#include <cstdio>
#include <span>

namespace keldrin {
namespace {

/// A field that is left with a text that is no number, as it looks then.
struct UnreadableField {
    int dialog = 0;
    int id = 0;
};
constexpr UnreadableField Unreadable[] = {
    {101, 1116}, {103, 1063}, {104, 1086}, {145, 1451}, {108, 1025}};

/// What a panel lies upon.
class Page : public QWidget {
  protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter(this).fillRect(rect(), Qt::white);
    }
};

void makeDark() {
    QPalette dark;
    const QColor window(45, 45, 48);
    const QColor base(30, 30, 32);
    dark.setColor(QPalette::Window, window);
    dark.setColor(QPalette::WindowText, Qt::white);
    dark.setColor(QPalette::Base, base);
    dark.setColor(QPalette::AlternateBase, window);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Button, window);
    dark.setColor(QPalette::ButtonText, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(42, 110, 190));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::ToolTipBase, base);
    dark.setColor(QPalette::ToolTipText, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    }
    QApplication::setPalette(dark);
}

void writePicture(const DialogSpec &spec, QMainWindow &root, const QDir &directory) {
    DialogModel dialog = makeDialog(spec);
    test::fillDialog(dialog);
    for (const UnreadableField &field : Unreadable) {
        if (field.dialog == spec.number) {
            typeText(dialog, field.id, "5O");
            commitField(dialog, field.id);
        }
    }
    for (ControlState &control : dialog.controls) {
        if (control.kind == ControlKind::Bar) {
            putFraction(control, 0.42);
        }
    }
    dialog.mode = spec.inRoot ? DialogModeless : DialogModal;
    DialogWindow window(dialog, &root);
    const QPoint lowerRight = root.mapToGlobal(QPoint(root.width(), root.height())) -
                              QPoint(dialog.size.width, dialog.size.height);
    window.showAt(spec.inRoot ? DialogPlacement{lowerRight.x(), lowerRight.y()}
                              : DialogPlacement{});
    QTest::qWait(50);
    const QPixmap picture = window.isPanel() ? root.grab() : window.grab();
    const QString path = directory.filePath(QString("dialog-%1.png").arg(spec.number));
    std::printf("%s %d x %d\n", path.toUtf8().constData(), window.width(), window.height());
    picture.save(path);
}

void writePictures(const QString &path, int points, bool isDark) {
    QFont font = QApplication::font();
    font.setPointSize(points);
    QApplication::setFont(font);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (isDark) {
        makeDark();
    }
    const QDir directory(path);
    directory.mkpath(".");
    QMainWindow root;
    root.setCentralWidget(new PageArea(new Page));
    root.resize(1100, 760);
    root.show();
    for (const DialogSpec *spec : DialogTables) {
        writePicture(*spec, root, directory);
    }
}

} // namespace
} // namespace keldrin

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    constexpr int usualPoints = 10;
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: dialog_pictures DIRECTORY [POINTS] [dark]\n");
        return 2;
    }
    const int points = arguments.size() > 2 ? arguments[2].toInt() : usualPoints;
    keldrin::writePictures(arguments[1], points > 0 ? points : usualPoints,
                           arguments.contains("dark"));
    return 0;
}
