#pragma once

#include <QString>

namespace vantrel {

class Database;

// Keeps a prescription just saved as a ready-made prescription under a new name: its examination and
// notes, the brand lines, complaints and diseases still in staging, and its advised investigations. One
// transaction of its own; the code of the new ready-made prescription, or 0 when nothing was written.
qint64 SaveAsReadyMade(Database& db, qint64 prescription, const QString& name);

} // namespace vantrel
