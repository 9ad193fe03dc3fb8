#include "model/survey_model.h"

#include "base/ascii.h"
#include "base/clock.h"
#include "base/index.h"
#include "base/real.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <stdexcept>

namespace keldrin {

namespace {

// The index of exactly the records in use, also of those that a reader has appended by itself.
SoundingIndex &settledKeys(SurveyModel &model) {
    SoundingIndex &keys = model.keyIndex;
    if (keys.size() > model.SoundingCount) {
        keys.clear();
    }
    while (keys.size() < model.SoundingCount) {
        const SoundingRecord &record = model.hTrn[asIndex(keys.size())];
        keys.add(record.TxStn, record.RxStn);
    }
    return keys;
}

} // namespace

void selectLine(SurveyModel &model, int line) {
    LineTable &lines = model.lines;
    if (lines.LineCount < 1) {
        return;
    }
    lines.SelectedLine = limited(line, 1, lines.LineCount);
    const LineEntry &entry = lines.selected();
    static_cast<LineScaling &>(model.preset) = entry.scaling;
    model.preset.SelectedArrayIndex = entry.ArrayIndex;
}

int allocateSoundings(SurveyModel &model, int requested) {
    if (model.SoundingCapacity() < requested) {
        try {
            std::vector<SoundingRecord>().swap(model.hTrn);
            model.hTrn.resize(asIndex(requested));
        } catch (const std::exception &) { // bad_alloc and length_error end here
            model.hTrn.clear();
            model.keyIndex.clear();
            model.SoundingCount = 0;
            return 1;
        }
    }
    hTrn_Init(model);
    return 0;
}

void hTrn_Init(SurveyModel &model) {
    std::fill(model.hTrn.begin(), model.hTrn.end(), SoundingRecord{});
    model.keyIndex.clear();
    model.SoundingCount = 0;
}

void STD_Init_Namelist(SurveyModel &model) {
    model.control = ControlValues{};
    model.control.Header[0] = writerStamp(clockNow());
    model.MaxTW = 0;
    model.ModelLayerCount = 0;
    model.TimeRatio = 0.0F;
}

int hTrn_Find(SurveyModel &model, double TxStn, float TxFreq, double RxStn) {
    SoundingIndex &keys = settledKeys(model);
    const double reach = 100.0;
    return keys.find(TxStn, reach * spacing(TxStn), RxStn, reach * spacing(RxStn), [&](int i) {
        const SoundingRecord &record = model.hTrn[asIndex(i)];
        return sameStation(record.RxStn, RxStn) && sameStation(record.TxStn, TxStn) &&
               sameFrequency(record.TxFreq, TxFreq);
    });
}

FindOrAdd hTrn_Find_Or_Add(SurveyModel &model, double TxStn, float TxFreq, double RxStn,
                           int &index) {
    index = hTrn_Find(model, TxStn, TxFreq, RxStn);
    if (index >= 0) {
        return FindOrAdd::Found;
    }
    const bool full = model.SoundingCount >= model.SoundingCapacity();
    if (full && model.SoundingCapacity() == 0) {
        return FindOrAdd::Full;
    }
    index = full ? model.SoundingCapacity() - 1 : model.SoundingCount++;
    SoundingRecord &record = model.hTrn[asIndex(index)];
    record.TxFreq = TxFreq;
    hTrn_Set_Stations(model, index, TxStn, RxStn);
    return full ? FindOrAdd::Full : FindOrAdd::Added;
}

void hTrn_Set_Stations(SurveyModel &model, int index, double TxStn, double RxStn) {
    SoundingRecord &record = model.hTrn[asIndex(index)];
    record.TxStn = TxStn;
    record.RxStn = RxStn;
    settledKeys(model).move(index, TxStn, RxStn);
}

void setSurveyType(ControlValues &control, int index) {
    control.SurveyTypeIndex = limited(index, 1, 4);
    control.SurveyType = nameOf(SurveyTypeNames, control.SurveyTypeIndex);
}

void setLengthUnits(ControlValues &control, int index) {
    control.LengthUnitsIndex = limited(index, 1, 2);
    control.LengthUnits = nameOf(LengthUnitNames, control.LengthUnitsIndex);
}

void setTEMUnits(ControlValues &control, int index) {
    control.TEMUnitsIndex = limited(index, 1, 3);
    control.TEMUnits = nameOf(TEMUnitNames, control.TEMUnitsIndex);
}

int surveyTypeIndexOf(std::string_view text) {
    const std::string letters = Str_No_Blanks(text);
    switch (letters.empty() ? ' ' : upperOf(letters.front())) {
    case 'C':
        return CoincidentLoop;
    case 'I':
        return InLoop;
    case 'F':
        return FixedLoop;
    default:
        return MovingLoop;
    }
}

int lengthUnitsIndexOf(std::string_view text) {
    const std::string letters = Str_No_Blanks(text);
    return !letters.empty() && upperOf(letters.front()) == 'F' ? Feet : Metres;
}

int temUnitsIndexOf(std::string_view text) {
    const std::string letters = Str_Upper(Str_No_Blanks(text)).substr(0, 4);
    return holds(letters, "NV") ? NanovoltPerAmpereSquareMetre : MicrovoltPerAmpere;
}

void deriveTimeRange(SurveyModel &model) {
    model.MaxTW = 0;
    model.TimeRatio = 1.0F;
    for (const SoundingRecord &record : model.soundings()) {
        model.MaxTW = std::max(model.MaxTW, record.NumTW);
        if (record.NumTW > 0) {
            const auto times = std::span(record.TWcenter).first(windowCount(record));
            model.TimeRatio = std::max(model.TimeRatio, times.back() / times.front());
        }
    }
    model.ModelLayerCount = limited(nearestInt(3.47436F * std::log(model.TimeRatio)), 2, 48);
}

} // namespace keldrin
