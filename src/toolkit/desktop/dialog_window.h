#pragma once

#include "toolkit/backend.h"
#include "toolkit/desktop/panel_frame.h"
#include "toolkit/desktop/widgets/button_list.h"
#include "toolkit/desktop/widgets/dialog_fields.h"
#include "toolkit/desktop/widgets/mnemonics.h"
#include "toolkit/dialog_model.h"

#include <QDialog>

#include <functional>
#include <vector>

class QGridLayout;

namespace keldrin {

/// A dialog of the program on the screen. Its controls, their order and their texts come from the
/// dialog's table, what they hold from its model; what the user does goes to the model by
/// user_edits.h and nowhere else.
///
/// A field is left, and its text committed, when the focus goes to another one, when Enter is
/// pressed in it, and before a button acts; but see ControlSpec::byEnter. Enter presses the button
/// that has the focus, else the default one; Esc and the close box do what userCloses() says. A
/// dialog that lies upon the root window (see DialogSpec) is a panel of it, with a title bar of its
/// own.
///
/// It never waits: its owner serves events until the model has an end button or an event is
/// queued, and must not destroy it while one of its hooks runs.
class DialogWindow : public QDialog {
  public:
    /// Makes a hidden dialog of a loaded model, which must outlive it, and fills the model's size.
    /// parent  the root window, to whose central widget a panel belongs
    DialogWindow(DialogModel &dialog, QWidget *parent);

    /// Shows it, modal if the model says so, with its corner at a place of the screen, or over the
    /// middle of its parent. It is kept inside the screen, a panel inside its root window.
    void showAt(DialogPlacement placement);

    /// A control has another value, text or state now; 0: the caption.
    void refresh(int id);

    /// Called after everything that the user does here, so that whoever waits wakes up.
    std::function<void()> onAction;

    /// Takes the keys of a dialog that leaves them to the root window (DialogModeless), as codes of
    /// keyCodeOf(): all but those which a text field needs, Tab, Space and those with Alt.
    std::function<void(int code)> keyHook;

    /// The widget of a control, for whoever drives it; null when there is none of that id. A
    /// button of a list has that of the button which opens it.
    [[nodiscard]] QWidget *widgetOf(int id) const;
    [[nodiscard]] QAction *listedAction(int id) const; ///< of a button of a list; null for others
    /// True for a panel that leaves the page the focus.
    [[nodiscard]] bool leavesFocus() const;
    [[nodiscard]] bool isPanel() const { return frame_ != nullptr; }
    void rollPanel(); ///< rolls it up or down again, if it is a panel that stays
    /// How the user has left a panel: kept at each change, and set before it is shown again.
    std::function<void(const PanelState &state)> onPanelChange;
    void setPanelState(const PanelState &state);
    [[nodiscard]] PanelState panelState() const; ///< for tests

    void setVisible(bool visible) override;
    void reject() override; ///< the user closes it

  protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

  private:
    void build(const DialogSpec &spec);
    void giveMnemonics();
    void orderTabs();
    void evenButtons();
    void connectField(const DialogField &field);

    void showAll();
    void showField(const DialogField &field);
    void showListed(const ListedButton &button);
    void showGroupTitle(QWidget *frame);
    [[nodiscard]] QString unitOf(const ControlSpec &spec) const;

    template <class Edit>
    void report(Edit edit);
    void typed(int id, const QString &text);
    void press(int id);
    void leaveField(const QObject *widget, bool byEnter);
    [[nodiscard]] bool commitsByEnter(const QObject *widget) const;

    [[nodiscard]] bool leavesKeys() const;
    [[nodiscard]] bool isForControl(const QObject *watched, const QKeyEvent &key) const;
    bool takesKey(QKeyEvent &key);
    bool takesKeyBesidePage(QKeyEvent &key, bool enter);
    void pressEnter();

    void giveFocus();
    [[nodiscard]] QMargins systemFrame() const;
    [[nodiscard]] QRect roomOnScreen() const;
    [[nodiscard]] QSize wantedSize() const;
    [[nodiscard]] QPoint heldOnScreen(QPoint corner) const;
    void settleLayout();
    void fitSize();
    void place(DialogPlacement placement);
    [[nodiscard]] bool staysOpen() const;
    [[nodiscard]] QPoint besidePage(QPoint told) const;

    DialogModel &dialog_;
    std::vector<DialogField> fields_; ///< in the order of the model
    std::vector<ListedButton> listed_;
    Mnemonics mnemonics_;
    std::vector<std::vector<QGridLayout *>> frames_; ///< whose fields are in line
    PanelFrame *frame_ = nullptr;                    ///< of a panel
    QSize fitted_;                                   ///< size that the content wanted last
    bool serving_ = false; ///< shown: what its widgets report is what the user does
};

} // namespace keldrin
