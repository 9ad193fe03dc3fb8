#include "toolkit/desktop/widgets/message_list.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTreeView>

#include <gtest/gtest.h>

namespace keldrin {
namespace {

const MessageRows Rows = {
    {RowKind::Info, "", 0, {"Reading TEM data"}},
    {RowKind::Warning, "line.avg", 7, {"no frequency", "1 Hz is taken"}},
    {RowKind::Error, "line.avg", 12, {"Rx.Cmp undefined"}},
    {RowKind::Notice, "", 0, {"line.std was kept"}},
};

TEST(MessageList, TheFilterLeavesWhatHoldsItsTextAndItsKind) {
    MessageList list(nullptr);
    list.setRows(Rows);
    const auto listed = [&] {
        return list.view().model()->rowCount();
    };
    EXPECT_EQ(listed(), 4);
    list.filterKind().setCurrentIndex(1);
    EXPECT_EQ(listed(), 2) << "warnings and errors";
    list.filterText().setText(" 1 hz ");
    EXPECT_EQ(listed(), 1) << "any line of a message, in any case";
    list.filterText().setText("12");
    EXPECT_EQ(list.copyText(), "error\tline.avg\t12\tRx.Cmp undefined\n");
    list.filterKind().setCurrentIndex(0);
    list.filterText().clear();
    list.addRow({RowKind::Error, "", 0, {"late"}});
    EXPECT_EQ(listed(), 5) << "it follows what is told";
}

TEST(MessageList, SelectedRowsAreCopiedElseAll) {
    MessageList list(nullptr);
    list.setRows(Rows);
    const QString all = list.copyText();
    EXPECT_EQ(all.count('\n'), 5);
    EXPECT_TRUE(all.contains("warning\tline.avg\t7\tno frequency\n\t\t\t1 Hz is taken\n"));
    list.view().setCurrentIndex(list.view().model()->index(2, 0));
    EXPECT_EQ(list.copyText(), "error\tline.avg\t12\tRx.Cmp undefined\n");
}

TEST(MessageList, TheNewestIsInViewUnlessTheUserHasScrolledAway) {
    MessageList list(nullptr);
    MessageRows many;
    for (int i = 0; i < 200; ++i) {
        many.push_back({RowKind::Info, "", 0, {"line " + std::to_string(i)}});
    }
    list.show();
    list.setRows(many);
    const auto isVisible = [&](int row) {
        const QRect place = list.view().visualRect(list.view().model()->index(row, 0));
        return list.view().viewport()->rect().intersects(place);
    };
    EXPECT_TRUE(isVisible(199));
    list.addRow({RowKind::Info, "", 0, {"newest"}});
    EXPECT_TRUE(isVisible(200));
    list.view().scrollToTop();
    list.addRow({RowKind::Info, "", 0, {"unseen"}});
    EXPECT_TRUE(isVisible(0));
}

TEST(MessageList, ItMovesFromWindowToWindowAndStaysOpen) {
    QWidget window;
    QDialog dialog(&window);
    auto *list = new MessageList(&window);
    list->show();
    list->moveTo(&dialog);
    EXPECT_TRUE(list->isVisible());
    EXPECT_EQ(list->parentWidget(), &dialog);
    list->moveTo(&window);
    EXPECT_TRUE(list->isVisible());
}

} // namespace
} // namespace keldrin
