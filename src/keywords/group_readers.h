#pragma once

#include "keywords/keyword_table.h"

#include <span>

namespace keldrin {

// One reader a group. Each takes a record whose group it owns and stores its values in the group's
// metadata; what holds for all of them stands in keyword_table.h.
//
// returns  0; the readers with indexed points also 1 for an index that does not exist, or the
//          status of the failed read of an index

int Survey_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Job_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Unit_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Grid_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Line_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Stn_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Qdr_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Gps_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Tx_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Rx_MD_Read(const KeywordRecord &record, Metadata &metadata);
int Ch_MD_Read(const KeywordRecord &record, Metadata &metadata);

/// The groups' tables, in the order of the manual.
std::span<const GroupTable *const> keywordGroups();

extern const GroupTable JobGroup;
extern const GroupTable SurveyGroup;
extern const GroupTable UnitGroup;
extern const GroupTable LineGroup;
extern const GroupTable StnGroup;
extern const GroupTable TxGroup;
extern const GroupTable RxGroup;
extern const GroupTable GridGroup;
extern const GroupTable GpsGroup;
extern const GroupTable QdrGroup;
extern const GroupTable ChGroup;

} // namespace keldrin
