#include "model/metadata.h"

namespace keldrin {
namespace {

/// Counters and marks behind a group's values: the only part that a reset may leave standing.
struct GroupTail {
    int unknownKeywords = 0;
    int lastPointIndex = 0;
};

template <class Group>
concept HasPoints = requires(Group group) {
    group.lastPointIndex;
};

template <class Group>
void resetGroup(Group &group, bool clear) {
    GroupTail tail;
    if (!clear) {
        tail.unknownKeywords = group.unknownKeywords;
        if constexpr (HasPoints<Group>) {
            tail.lastPointIndex = group.lastPointIndex;
        }
    }
    group = Group{};
    group.unknownKeywords = tail.unknownKeywords;
    if constexpr (HasPoints<Group>) {
        group.lastPointIndex = tail.lastPointIndex;
    }
}

} // namespace

void MD_Init(Metadata &metadata, bool clear) {
    resetGroup(metadata.Job, clear);
    resetGroup(metadata.Survey, clear);
    resetGroup(metadata.Unit, clear);
    resetGroup(metadata.Grid, clear);
    resetGroup(metadata.Line, clear);
    resetGroup(metadata.Stn, clear);
    resetGroup(metadata.Qdr, clear);
    resetGroup(metadata.Gps, clear);
    resetGroup(metadata.Tx, clear);
    resetGroup(metadata.Rx, clear);
    resetGroup(metadata.Ch, clear);
}

} // namespace keldrin
