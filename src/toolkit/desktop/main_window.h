#pragma once

#include "toolkit/toolkit.h"

#include <QMainWindow>

#include <array>
#include <functional>
#include <map>

class QLabel;

namespace keldrin {

class Canvas;
class NoticeLine;
struct MenuEntry;

/// The root window: the menu on its bar, the page, and a status bar. It only shows and reports.
class MainWindow : public QMainWindow {
  public:
    MainWindow();

    Canvas &canvas() { return *canvas_; }

    std::function<void(int command)> onMenu;
    std::function<void(int key)> onKey;
    std::function<void()> onClose;
    std::function<void(const QString &path)> onDrop; ///< a file was dropped on the window
    std::function<void(QPoint global, bool beside)> onContextMenu; ///< beside: not on the page
    std::function<void()> onMessages; ///< log and messages are asked for

    void setCommand(int command, bool on);
    void serveMenu(bool on);
    [[nodiscard]] bool servesMenu() const { return menuServed_; }
    void setStatus(StatusPart part, const QString &text);
    /// Shows the program's title, after the name of the file that it ends with, where it has one,
    /// and a mark while changes are not saved.
    void showTitle(const QString &title);
    [[nodiscard]] QAction *actionOf(int command) const;

  protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

  private:
    void makeMenu();
    QAction *addEntry(const MenuEntry &entry);
    void makeStatusBar();

    Canvas *canvas_ = nullptr;
    std::map<int, QAction *> actions_; ///< by command
    NoticeLine *notices_ = nullptr;
    std::array<QLabel *, 7> status_{}; ///< by StatusPart, but for those of notices_
    bool menuServed_ = true;
};

} // namespace keldrin
