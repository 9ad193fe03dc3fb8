#include "toolkit/desktop/widgets/table_view.h"

#include "toolkit/desktop/dialog_window.h"
#include "toolkit/desktop/page_area.h"
#include "toolkit/dialog_form.h"
#include "toolkit/scripted/answering_backend.h"
#include "toolkit/toolkit_state.h"

#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace keldrin {
namespace {

struct Sample {
    int count = 40;
    TableRows rows;
};

TableContent tableOf(const Sample &sample) {
    TableContent table;
    table.columns = {{"Window", true}, {"dB/dt\n(uV/A)", true}, {"Mark", false}};
    for (int i = 1; i <= sample.count; ++i) {
        table.rows.push_back({std::to_string(i), "1.25E-3", i % 2 == 0 ? "skipped" : ""});
    }
    return table;
}

enum Id : int { Table = 1, Shut = 2 };

constexpr std::array Controls = {
    ControlSpec{.id = Table,
                .kind = ControlKind::Grid,
                .label = "Windows",
                .field = fieldOf<&Sample::rows>(),
                .table = givenBy<tableOf>(),
                .rows = 10},
    ControlSpec{.id = Shut, .kind = ControlKind::Button, .label = "Shut"},
};

const DialogForm<Sample> Form = DialogSpec{.number = 9,
                                           .caption = "Sample",
                                           .defaultButton = Shut,
                                           .controls = Controls,
                                           .inRoot = true,
                                           .place = DialogPlace::Beside};

/// A toolkit whose dialogs stand beside a page, a button that has the focus.
class Windows : public AnsweringBackend {
  public:
    Windows() {
        root.setCentralWidget(new PageArea(page));
        root.resize(900, 460);
        root.show();
        static_cast<void>(QTest::qWaitForWindowActive(&root));
        page->setFocus();
        ToolkitInit(*this, {"keldrin"});
    }
    ~Windows() override { ToolkitClose(); }

    void loadDialog(DialogModel &dialog) override {
        window = std::make_unique<DialogWindow>(dialog, &root);
        window->keyHook = [this](int code) {
            keys.push_back(code);
        };
    }
    void showDialog(DialogModel & /*dialog*/, DialogPlacement placement) override {
        window->showAt(placement);
        static_cast<void>(QTest::qWaitForWindowExposed(window.get()));
    }
    void hideDialog(DialogModel & /*dialog*/) override { window->hide(); }
    void unloadDialog(DialogModel & /*dialog*/) override { window.reset(); }
    void refresh(DialogModel & /*dialog*/, int id) override { window->refresh(id); }
    void pointAtRow(DialogModel & /*dialog*/, int id) override { window->refresh(id); }

    QMainWindow root;
    QPushButton *page = new QPushButton("page");
    std::unique_ptr<DialogWindow> window;
    std::vector<int> keys;
};

class TableViewTest : public testing::Test {
  protected:
    TableViewTest() { openDialog(Form, sample, DialogModeless); }

    TableView &table() { return dynamic_cast<TableView &>(*backend.window->widgetOf(Table)); }
    void click(int row, Qt::KeyboardModifiers held = Qt::NoModifier) {
        const QModelIndex cell = table().model()->index(row - 1, 0);
        table().scrollTo(cell);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, held,
                          table().visualRect(cell).center());
    }
    TableRows selected() {
        readField(Form, Table, sample);
        return sample.rows;
    }
    [[nodiscard]] bool seesRow(int row) {
        const QRect cell = table().visualRect(table().model()->index(row - 1, 0));
        return table().viewport()->rect().contains(cell.center());
    }

    Windows backend;
    Sample sample;
};

TEST_F(TableViewTest, RowsAreSelectedByMouseAndKeysAndOtherKeysGoToThePage) {
    click(3);
    click(5, Qt::ShiftModifier);
    click(9, Qt::ControlModifier);
    EXPECT_EQ(selected(), (TableRows{3, 4, 5, 9}));
    click(7);
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), (TableRows{7, 8}));
    QTest::keyClick(&table(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(selected().size(), 40U);
    EXPECT_TRUE(backend.keys.empty());
    QTest::keyClick(&table(), Qt::Key_N);
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(backend.keys, (std::vector<int>{'n', KeyWithCtrl | 'C'}));
}

TEST_F(TableViewTest, PointingAtARowBringsItOnShowAndSelectsNothing) {
    click(2);
    WDialogPointAtRow(Table, 35);
    EXPECT_TRUE(seesRow(35));
    EXPECT_EQ(selected(), TableRows{2});
    const QModelIndex pointed = table().model()->index(34, 1);
    EXPECT_TRUE(pointed.data(Qt::BackgroundRole).isValid());
    WDialogPointAtRow(Table, 0);
    EXPECT_FALSE(pointed.data(Qt::BackgroundRole).isValid());
    EXPECT_TRUE(seesRow(35)) << "it stays where it was looked at";
}

TEST_F(TableViewTest, AnotherContentOfTheSameSizeKeepsThePlaceAndTellsNoSelection) {
    click(30);
    const int place = table().verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    ToolkitEvent event;
    while (ToolkitPeekEvent(event)) {
    }
    sample.rows = {1, 2};
    putFields(Form, sample);
    EXPECT_EQ(table().selectionModel()->selectedRows().size(), 2);
    EXPECT_EQ(table().verticalScrollBar()->value(), place);
    sample.count = 3;
    sample.rows = {};
    putFields(Form, sample);
    EXPECT_EQ(table().model()->rowCount(), 3);
    EXPECT_FALSE(table().selectionModel()->hasSelection());
    EXPECT_FALSE(ToolkitPeekEvent(event)) << "the program selects, not the user";
}

TEST_F(TableViewTest, StandsBesideThePageWhichKeepsTheFocusAndHasItsEsc) {
    EXPECT_TRUE(backend.page->hasFocus());
    EXPECT_FALSE(backend.window->geometry().intersects(backend.page->geometry()));
    table().setFocus();
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_EQ(backend.keys, std::vector<int>{KeyEscape});
    backend.window->close();
    ToolkitEvent event;
    ASSERT_TRUE(ToolkitPeekEvent(event));
    EXPECT_EQ(event.value, Shut);
}

TEST_F(TableViewTest, TenRowsAndAllColumnsAreSeenAtFirstAndItGrowsWithTheWindow) {
    EXPECT_TRUE(seesRow(1));
    EXPECT_TRUE(seesRow(10));
    EXPECT_FALSE(table().horizontalScrollBar()->isVisible());
    const int height = table().height();
    backend.root.resize(900, 580);
    QTest::qWait(20);
    EXPECT_GT(table().height(), height + 100);
}

} // namespace
} // namespace keldrin
