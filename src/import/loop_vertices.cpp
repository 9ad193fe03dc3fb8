#include "import/amira/record.h"
#include "import/import_steps.h"

namespace keldrin {

namespace {

constexpr std::size_t FirstCorner = 1;

// The vertices in the record that works out the shape of a loop; false where one is missing.
bool takeCorners(const TxMetadata &tx, AmiraRecord &record) {
    for (std::size_t i = 0; i < record.vertices.size(); ++i) {
        const XyzPoint &point = tx.XYZ[FirstCorner + i].value;
        if (!isPresent(point[0]) || !isPresent(point[1])) {
            return false;
        }
        record.vertices[i] = {point[0], point[1], point[2]};
    }
    return true;
}

} // namespace

void settleLoopFromVertices(SurveyModel &model, GivenSettings &given) {
    const TxMetadata &tx = model.metadata.Tx;
    ControlValues &control = model.control;
    AmiraRecord record;
    if (!takeCorners(tx, record) || AMR_Loop_Geometry(record, 1.0) != 0) {
        return;
    }
    if (!isPresent(tx.CenterX.value)) {
        control.XTxCenter = record.XTxCenter;
    }
    if (!isPresent(tx.CenterY.value)) {
        control.YTxCenter = record.YTxCenter;
    }
    given.centre = true;
    if (given.loop) {
        return;
    }
    given.loop = true;
    control.XTxLength = record.XTxLength;
    control.YTxLength = record.YTxLength;
    if (tx.Azimuth.level == 0) {
        control.TxAzimuth = record.sideAzimuth;
    }
}

} // namespace keldrin
