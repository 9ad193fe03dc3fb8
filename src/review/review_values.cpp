#include "review/review_values.h"

#include "base/index.h"
#include "base/number_text.h"
#include "base/real.h"
#include "review/review_pointer.h"
#include "review/review_skip.h"
#include "review/values_dialog.h"
#include "review/window_values.h"

#include <array>
#include <string>

namespace keldrin {

namespace {

ValuesShown shownOf(const Review &review) {
    const SurveyModel &survey = review.survey;
    const int station = review.state.ReviewStation;
    const SoundingRecord &sounding = survey.sounding(station);
    ValuesShown shown;
    shown.sounding =
        "Sounding " + std::to_string(station) + " of " + std::to_string(survey.SoundingCount);
    shown.sounding += isPresent(sounding.RxStn) ? ", station " + messageNumber(sounding.RxStn) : "";
    shown.table = windowValues(survey.control, sounding);
    return shown;
}

void changeValues(Review &review, const ToolkitEvent & /*event*/) {
    review.redraws = false;
    review.valuesWanted = !review.valuesWanted;
    if (review.valuesWanted) {
        openValues(review);
    } else {
        closeValues(review);
    }
}

TableRows selectedRows() {
    ValuesShown shown;
    WDialogSelect(ValuesDialog.number);
    readField(ValuesDialog, ValuesControl::Table, shown);
    return shown.rows;
}

template <int flag>
void markRows(Review &review, const ToolkitEvent & /*event*/) {
    review.redraws = false;
    if (!review.valuesOpen) {
        return;
    }
    const TableRows rows = selectedRows();
    ToolkitStatus(StatusPart::Notice, rows.empty() ? "Select rows of the table first." : "");
    if (rows.empty()) {
        return;
    }
    review.redraws = true;
    SoundingRecord &sounding = review.survey.sounding(review.state.ReviewStation);
    actOnMarks(review, [&] {
        for (const int row : rows) {
            const std::size_t window = asIndex(row - 1);
            float &error = sounding.TEMerr[window];
            error =
                isPresent(sounding.TEMobs[window]) ? withSkipMark(error, flag == SetMark) : error;
        }
    });
}

void copyRows(Review &review, const ToolkitEvent & /*event*/) {
    review.redraws = false;
    if (!review.valuesOpen) {
        return;
    }
    const TableRows rows = selectedRows();
    const TableContent table = shownOf(review).table;
    ToolkitCopyText(tabbedText(table, rows));
    const std::size_t count = rows.empty() ? table.rows.size() : rows.size();
    ToolkitStatus(StatusPart::Notice,
                  std::to_string(count) + (count == 1 ? " row copied." : " rows copied."));
}

void keepPage(Review &review, const ToolkitEvent & /*event*/) {
    review.redraws = false;
}

constexpr std::array ValuesBindings = {
    ReviewBinding{EventKey, 'T', changeValues},
    ReviewBinding{EventKey, 't', changeValues},
    ReviewBinding{EventKey, KeyDelete, markRows<SetMark>},
    ReviewBinding{EventKey, KeyWithCtrl | KeyDelete, markRows<ClearMark>},
    ReviewBinding{EventKey, KeyWithCtrl | 'C', copyRows},
    ReviewBinding{EventButton, ValuesControl::Mark, markRows<SetMark>},
    ReviewBinding{EventButton, ValuesControl::Clear, markRows<ClearMark>},
    ReviewBinding{EventButton, ValuesControl::Copy, copyRows},
    ReviewBinding{EventButton, ValuesControl::Close, changeValues},
    ReviewBinding{EventFieldChange, ValuesControl::Table, keepPage},
};

} // namespace

std::span<const ReviewBinding> valuesBindings() {
    return ValuesBindings;
}

bool serveValues(Review &review, const ToolkitEvent &event) {
    if (!review.valuesOpen || event.type != EventKey || event.value != KeyEscape) {
        return false;
    }
    changeValues(review, event);
    return true;
}

void openValues(Review &review) {
    if (review.valuesWanted && !review.valuesOpen) {
        review.valuesOpen = true;
        review.valuesStation = review.state.ReviewStation;
        openDialog(ValuesDialog, shownOf(review), DialogModeless);
    }
}

void closeValues(Review &review) {
    if (review.valuesOpen) {
        review.valuesOpen = false;
        closeDialog(ValuesDialog);
    }
}

void showValues(Review &review) {
    if (!review.valuesOpen) {
        return;
    }
    ValuesShown shown = shownOf(review);
    if (review.valuesStation == review.state.ReviewStation) {
        shown.rows = selectedRows();
    }
    review.valuesStation = review.state.ReviewStation;
    WDialogSelect(ValuesDialog.number);
    putFields(ValuesDialog, shown);
}

void pointAtValues(const Review &review, float x, float y) {
    if (!review.valuesOpen) {
        return;
    }
    const int selected = ToolkitDialogInfo(DialogSelected);
    WDialogSelect(ValuesDialog.number);
    WDialogPointAtRow(ValuesControl::Table,
                      windowUnder(review.survey, review.limits, review.state.ReviewStation, x, y));
    if (selected != 0) {
        WDialogSelect(selected);
    }
}

} // namespace keldrin
