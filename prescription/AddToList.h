#pragma once

#include <QString>

namespace vantrel {

class Database;
class Prompter;

// Adds a typed entry to a master from the prescription screen: "COMPLAINT" to Complaints, "DSGREMARK" to
// DsgRemark. The text is trimmed and put in capitals; a name already there is refused with the master's
// message. The new code, or 0.
qint64 AddToList(Database& db, Prompter& prompter, const QString& kind, const QString& text);

} // namespace vantrel
