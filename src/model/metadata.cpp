#include "model/metadata.h"

namespace keldrin {
namespace {

template <class Group>
void restoreGroup(Group &group, const Group &before) {
    const GroupTail tail = group.tail;
    group = before;
    group.tail = tail;
}

} // namespace

void MD_Init(Metadata &metadata, bool clear) {
    const Metadata defaults;
    if (clear) {
        metadata = defaults;
    } else {
        MD_Restore(metadata, defaults);
    }
}

void MD_Restore(Metadata &metadata, const Metadata &before) {
    restoreGroup(metadata.Job, before.Job);
    restoreGroup(metadata.Survey, before.Survey);
    restoreGroup(metadata.Unit, before.Unit);
    restoreGroup(metadata.Grid, before.Grid);
    restoreGroup(metadata.Line, before.Line);
    restoreGroup(metadata.Stn, before.Stn);
    restoreGroup(metadata.Qdr, before.Qdr);
    restoreGroup(metadata.Gps, before.Gps);
    restoreGroup(metadata.Tx, before.Tx);
    restoreGroup(metadata.Rx, before.Rx);
    restoreGroup(metadata.Ch, before.Ch);
}

} // namespace keldrin
