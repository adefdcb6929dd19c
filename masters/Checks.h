#pragma once

#include <QString>

namespace vantrel {

struct ProcessState;

// True when some table refers to the code; the statement is left in state.ScratchSql.
bool IsCodeInUse(ProcessState& state, qint64 code, const QString& key);
// True when another row has the name (name trimmed by the caller); editMode 1 = new, otherwise the row's own
// code is excluded; parentCode only for "SUBGROUP".
bool IsDuplicateName(ProcessState& state, qint64 code, const QString& name, const QString& key, int editMode,
                     qint64 parentCode = 0);

} // namespace vantrel
