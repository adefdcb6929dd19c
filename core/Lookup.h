#pragma once

#include <QString>

namespace vantrel {

class Database;

// The name of a brand, or an empty text when there is no brand of that code.
QString BrandName(Database& db, qint64 code);

} // namespace vantrel
