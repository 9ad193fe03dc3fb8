#pragma once

#include <QFrame>
#include <QPoint>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QRubberBand;
class QVBoxLayout;

namespace keldrin {

class PageArea;
class PanelStrip;
class TitleButton;

enum class PanelSide { Floating, Left, Right };

/// How a user has left a panel.
struct PanelState {
    PanelSide side = PanelSide::Right;
    bool rolledUp = false;
    std::optional<QPoint> corner = {}; ///< where it floated last

    bool operator==(const PanelState &) const = default;
};

/// Frame and title bar of a panel: a widget that stands beside a page like a docked window, or
/// floats upon it, also where the window system does not let programs place their windows.
///
/// Its title bar drags it: off its side, about the page, and back to a side when the mouse lets it
/// go at an edge. A double click or a button docks it and lets it float. Floating, it stays inside
/// and keeps its distance from the nearer edges when the widget below it is resized. Rolled up, all
/// that is seen is its title bar, or, docked, a strip at the edge; one that is closed by its close
/// box is never rolled up.
class PanelFrame : public QFrame {
  public:
    /// What its close box does, and whether it can be rolled up.
    enum class CloseBox { RollsUp, Closes };

    /// Fills `panel`, a child of the widget that it lies upon.
    /// docks  it may stand beside the page; needs a PageArea as that widget
    PanelFrame(QWidget *panel, bool docks, CloseBox closeBox = CloseBox::RollsUp);
    ~PanelFrame() override;

    void setCaption(const QString &caption);
    /// Where the content goes, below the title bar.
    [[nodiscard]] QVBoxLayout &content() { return *content_; }
    [[nodiscard]] QWidget &panel() const { return *panel_; }

    [[nodiscard]] bool isDocked() const;
    [[nodiscard]] PanelState state() const;
    void setState(const PanelState &state);

    /// Comes to its place, floating at a corner if nothing better is known, or gives the page its
    /// room back.
    void enter(QPoint corner);
    void leave();

    /// Moves a floating panel's corner to a place of the widget below, as near as can be.
    void moveTo(QPoint corner);
    /// Gives the panel the size that it wants and the room that there is.
    void fit();
    /// The width that it wants beside the page, and the least that it can do with.
    [[nodiscard]] int dockedWidth(int height) const;
    [[nodiscard]] int leastWidth() const;
    /// The height that it wants beside the page, and the least that it can do with.
    [[nodiscard]] int wantedHeight() const;
    [[nodiscard]] int leastHeight() const;
    [[nodiscard]] bool holdsTable() const; ///< which can be scrolled

    std::function<void()> onClose;  ///< the close box
    std::function<void()> onChange; ///< the user has given it another state

    void rollUp(bool rolledUp);

  protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

  private:
    QWidget *makeTitle();
    TitleButton *addTitleButton(const char *name, std::function<void()> action);
    void dock(PanelSide side);
    void showState();
    void notifyChange();

    bool serveTitle(QEvent &event);
    void drag(QPoint place);
    void drop(QPoint place);
    [[nodiscard]] QPoint firstCorner() const;
    [[nodiscard]] PanelSide sideAt(QPoint place) const;
    void showTarget(PanelSide side);
    void keepDistance();

    QWidget *panel_;
    CloseBox closeBox_;
    QPointer<PageArea> area_; ///< null where it cannot dock
    QWidget *title_ = nullptr;
    QLabel *caption_ = nullptr;
    TitleButton *dock_ = nullptr;
    TitleButton *roll_ = nullptr;
    TitleButton *close_ = nullptr;
    PanelStrip *strip_ = nullptr;
    QWidget *body_ = nullptr;
    QVBoxLayout *content_ = nullptr;
    PanelState state_;
    PanelSide lastSide_ = PanelSide::Right; ///< where it was docked last

    std::optional<QPoint> pressed_; ///< place of the screen where the mouse went down on the title
    QPoint grabbed_;                ///< place of the panel under the mouse
    bool dragging_ = false;
    std::optional<QPoint> floatedAt_;     ///< before it was dragged
    std::unique_ptr<QRubberBand> target_; ///< shows where it would dock

    QPoint fromTopLeft_; ///< distances of the panel's edges from those of the widget below
    QPoint fromBottomRight_;
};

} // namespace keldrin
