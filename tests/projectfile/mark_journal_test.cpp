#include "projectfile/mark_journal.h"

#include "project_case.h"
#include "support/failing_files.h"

#include <array>
#include <filesystem>

namespace keldrin {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view Line =
    "&KELDRIN\nTEMUnits='nV/Am2'\n/\n"
    "Station,East,North,Elevation,RxStn,TxStn,TWcenter,TWwidth,TEMobs,TEMerr\n"
    "100,1,2,3,100,100,0.1,0.05,5,3\n"
    "100,1,2,3,100,100,0.2,0.05,4,3\n"
    "150.0625,1,2,3,150.0625,100,0.1,0.05,5,1003\n";

class MarkJournalTest : public ProjectCase {
  protected:
    MarkJournalTest() {
        EXPECT_EQ(read(Line), 0);
        journal.path = markJournalPath(path);
    }

    // A mark as the review sets it.
    void set(int station, std::size_t window, bool skipped) {
        float &error = model.sounding(station).TEMerr[window];
        error = withSkipMark(error, skipped);
        const std::array windows = {LineWindow{station, window}};
        appendMarks(journal, model, windows);
    }
    // The marks after the project was read again and those of the journal were taken.
    std::string taken() {
        EXPECT_EQ(STD_File_Read(model, path), 0);
        UnsavedMarks marks;
        if (readMarkJournal(journal.path, marks)) {
            takeUnsavedMarks(model, marks);
        }
        std::string digits;
        for (const SoundingRecord &record : model.soundings()) {
            for (std::size_t i = 0; i < windowCount(record); ++i) {
                digits += isSkipped(record.TEMerr[i]) ? '1' : '0';
            }
        }
        return digits;
    }

    MarkJournal journal;
};

TEST_F(MarkJournalTest, BringsBackWhatTheProjectDoesNotHold) {
    set(1, 0, true);
    set(2, 0, false);
    set(1, 1, true);
    set(1, 0, false);
    ASSERT_EQ(STD_File_Read(model, path), 0);
    UnsavedMarks marks;
    ASSERT_TRUE(readMarkJournal(journal.path, marks));
    EXPECT_EQ(marks.date, "14/05/2021 09:30:00");
    EXPECT_EQ(countUnsavedMarks(model, marks).changes, 2) << "the first window is as it was";
    model.SoundingCount = 1;
    EXPECT_EQ(countUnsavedMarks(model, marks).unknown, 1) << "of the sounding that is gone";
    EXPECT_EQ(taken(), "010");
}

TEST_F(MarkJournalTest, KeepsTheErrorThresholdWithTheMarks) {
    const float before = model.control.DataCutoff;
    const std::array windows = {LineWindow{1, 0}, LineWindow{2, 0}};
    for (const LineWindow &each : windows) {
        float &error = model.sounding(each.station).TEMerr[each.window];
        error = withSkipMark(error, true);
    }
    appendMarks(journal, model, windows, 12.5F);
    appendMarks(journal, model, {}, 1.0F); // a threshold that looks like a mark
    ASSERT_EQ(STD_File_Read(model, path), 0);
    EXPECT_EQ(model.control.DataCutoff, before);
    UnsavedMarks marks;
    ASSERT_TRUE(readMarkJournal(journal.path, marks));
    EXPECT_EQ(marks.cutoff, 1.0F);
    EXPECT_EQ(countUnsavedMarks(model, marks).unknown, 0);
    const int changes = countUnsavedMarks(model, marks).changes;
    takeUnsavedMarks(model, marks);
    EXPECT_EQ(model.control.DataCutoff, 1.0F);
    EXPECT_EQ(countUnsavedMarks(model, marks).changes, 0);
    EXPECT_GE(changes, 2) << "the threshold is one";

    for (const std::string odd : {"", "-3", "nan", "1e99", "12x"}) {
        putFile(journal.path, "head\n14/05/2021 09:30:00,DataCutoff," + odd + "\n");
        ASSERT_TRUE(readMarkJournal(journal.path, marks));
        EXPECT_FALSE(marks.cutoff) << odd;
        EXPECT_TRUE(marks.skipped.empty()) << odd;
    }
}

TEST_F(MarkJournalTest, PassesOverALineThatWasCut) {
    set(1, 0, true);
    set(1, 1, true);
    const std::string whole = fileContent(journal.path);
    const std::size_t second = whole.rfind('\n', whole.size() - 2) + 1;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        putFile(journal.path, whole.substr(0, size));
        const std::string expected = size == whole.size() ? "111" : size < second ? "001" : "101";
        EXPECT_EQ(taken(), expected) << size << " bytes";
    }
    putFile(journal.path, whole + "99/99/9999 99:99:99,nonsense,7\n\n,,,,1\n1\n");
    EXPECT_EQ(taken(), "111");
}

TEST_F(MarkJournalTest, GoesWithAWriteOfItsProjectAlone) {
    set(1, 0, true);
    EXPECT_TRUE(STD_File_Write(model, directory.path("other.std")).written);
    EXPECT_TRUE(std::filesystem::exists(journal.path));
    {
        const FailingFiles files({FileCall::Write, FileFault::Fails, 1});
        EXPECT_FALSE(STD_File_Write(model, path).written);
    }
    EXPECT_EQ(taken(), "101") << "the write has failed";
    EXPECT_TRUE(STD_File_Write(model, path).written);
    EXPECT_FALSE(std::filesystem::exists(journal.path));

    journal.file.close();

    // Marks of another project are kept with it.
    set(1, 1, true);
    SurveyModel other = model;
    other.source = {};
    EXPECT_TRUE(STD_File_Write(other, path).written);
    EXPECT_FALSE(std::filesystem::exists(journal.path));
    EXPECT_THAT(fileContent(journal.path + "~"), HasSubstr("100,100,0.2,1\n"));
}

TEST_F(MarkJournalTest, NeverStopsTheReview) {
    int told = 0;
    spoilEveryCall(
        FileFault::Fails,
        [&] {
            std::filesystem::remove(journal.path);
            journal = {markJournalPath(path)};
            messages.infos.clear();
        },
        [&] {
            set(1, 0, true);
            set(1, 1, true);
        },
        [&](const SpoiledCall &spoiled) {
            told += messages.infos.empty() ? 0 : 1;
            EXPECT_THAT(messages.errors, IsEmpty()) << spoiled.text();
            journal.path = markJournalPath(path);
        });
    EXPECT_GE(told, 4) << "open, two writes, flush";
    MarkJournal none;
    none.path = markJournalPath("/nowhere/at/all.std");
    const std::array windows = {LineWindow{1, 0}};
    appendMarks(none, model, windows);
    EXPECT_THAT(none.path, IsEmpty()) << "nothing more is tried";
    EXPECT_EQ(markJournalPath("field.avg"), "");
}

#ifndef _WIN32
TEST_F(MarkJournalTest, AKillCostsTheLastMarkAtMost) {
    const int kills = killAtEveryCall([&] { std::filesystem::remove(journal.path); },
                                      [&] {
                                          set(1, 0, true);
                                          set(1, 1, true);
                                      },
                                      [&](const SpoiledCall &spoiled) {
                                          if (spoiled.number > 2) { // the first mark is on the disk
                                              EXPECT_THAT(taken(), testing::AnyOf("101", "111"))
                                                  << spoiled.text();
                                          }
                                      });
    EXPECT_GE(kills, 6);
}
#endif

} // namespace
} // namespace keldrin
