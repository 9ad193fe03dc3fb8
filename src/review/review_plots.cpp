#include "review/review_entry.h"

#include "review/plot_zoom.h"
#include "review/review_limits.h"
#include "review/review_panel.h"
#include "sounding/hardcopy.h"
#include "sounding/plot_document.h"

#include <array>
#include <span>

namespace keldrin {

namespace {

template <PlotDevice device>
void plotOn(Review &review, const ToolkitEvent & /*event*/) {
    QCC_Plot_Hardcopy(review.survey, review.limits, device, review.state.ReviewStation, review.path,
                      review.date, review.time);
}

void plotAll(Review &review, const ToolkitEvent & /*event*/) {
    Plot_AllSoundings(review.survey, review.limits, review.path, review.date, review.time);
}

void editLimits(Review &review, const ToolkitEvent & /*event*/) {
    const PlotLimits before = review.limits;
    Review_EditLimits(review.survey, review.limits);
    keepSetLimits(review.whole, before, review.limits);
    review.state.style = review.limits.style;
}

constexpr std::array PlotBindings = {
    ReviewBinding{EventKey, KeyWithCtrl | 'P', plotOn<PlotToPrinter>},
    ReviewBinding{EventButton, ReviewControl::PrinterPlot, plotOn<PlotToPrinter>},
    ReviewBinding{EventButton, ReviewControl::ToMetafile, plotOn<PlotToMetafile>},
    ReviewBinding{EventButton, ReviewControl::ToHpgl, plotOn<PlotToHpgl>},
    ReviewBinding{EventButton, ReviewControl::ToPng, plotOn<PlotToPng>},
    ReviewBinding{EventButton, ReviewControl::ToPdf, plotOn<PlotToPdf>},
    ReviewBinding{EventButton, ReviewControl::ToSvg, plotOn<PlotToSvg>},
    ReviewBinding{EventButton, ReviewControl::AllToPdf, plotAll},
    ReviewBinding{EventButton, ReviewControl::EditLimits, editLimits},
};

} // namespace

std::span<const ReviewBinding> plotBindings() {
    return PlotBindings;
}

} // namespace keldrin
