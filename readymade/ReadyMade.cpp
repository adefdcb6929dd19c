#include "readymade/ReadyMade.h"

#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

qint64 SaveAsReadyMade(Database& db, qint64 prescription, const QString& name) {
    Transaction tx(db);
    const qint64 code =
        db.scalar(u"SELECT COALESCE(MAX(Code), 0) + 1 AS MaxCode FROM Readymade"_s).toLongLong();
    const bool done =
        db.execute(u"INSERT INTO Readymade (Code, Name, Examination, Remark) "
                   "SELECT ?, ?, Examination, Remark FROM PresHead WHERE Code = ?"_s,
                   {code, name, prescription}) > 0 &&
        db.execute(u"INSERT INTO ReadyDet (Code, GenericCode, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage) "
                   "SELECT ?, Code, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage FROM TmpDet"_s,
                   {code}) >= 0 &&
        db.execute(u"INSERT INTO ReadyComplaint (ReadyCode, ComplaintCode, Notes) "
                   "SELECT ?, ComplaintCode, Notes FROM TmpComplaint"_s,
                   {code}) >= 0 &&
        db.execute(u"INSERT INTO ReadyDisease (ReadyCode, DiseaseCode, Notes) "
                   "SELECT ?, DiseaseCode, Notes FROM TmpDisease"_s,
                   {code}) >= 0 &&
        db.execute(u"INSERT INTO ReadyAdvised (ReadyCode, InvestigationCode) "
                   "SELECT ?, InvestigationCode FROM PresAdvised WHERE PrescriptionCode = ?"_s,
                   {code, prescription}) >= 0 &&
        tx.commit();
    return done ? code : 0;
}

} // namespace vantrel
