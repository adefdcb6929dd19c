#include "core/Lookup.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

QString BrandName(Database& db, qint64 code) {
    const QVariant name = db.scalar(u"SELECT A.Name FROM GenericName A WHERE A.Code = ?"_s, {code});
    return name.isNull() ? QString() : name.toString();
}

} // namespace vantrel
