#include "organiser/DeliveredDocuments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

// Copies every file of one folder into another, leaving alone the files the target already holds.
bool copyMissing(const QString& from, const QString& to, QString* error) {
    if (!QDir().mkpath(to))
        return fail(error, to + u": the folder can not be made"_s);
    for (const QFileInfo& file : QDir(from).entryInfoList(QDir::Files, QDir::Name)) {
        const QString target = QDir(to).filePath(file.fileName());
        if (QFileInfo::exists(target))
            continue;
        if (!QFile::copy(file.filePath(), target))
            return fail(error, target + u": the file can not be written"_s);
    }
    return true;
}

// The TopicName and HeaderImg of each row of the HotTopics data file.
bool topicHeaders(const QString& path, QList<std::pair<QString, QString>>* out, QString* error) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return fail(error, path + u": "_s + file.errorString());
    int title = -1;
    int image = -1;
    for (int lineNo = 1; !file.atEnd(); ++lineNo) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || (title < 0 && line.startsWith(u'#')))
            continue;
        const QStringList fields = line.split(u'\t');
        if (title < 0) {
            title = fields.indexOf(u"TopicName"_s);
            image = fields.indexOf(u"HeaderImg"_s);
            if (title < 0 || image < 0)
                return fail(
                    error, u"%1:%2: the columns TopicName and HeaderImg are missing"_s.arg(path).arg(lineNo));
            continue;
        }
        if (fields.size() <= std::max(title, image))
            return fail(error, u"%1:%2: too few fields"_s.arg(path).arg(lineNo));
        out->append({fields.at(title), fields.at(image)});
    }
    return true;
}

} // namespace

QImage DrawTopicHeader(const QString& title) {
    QImage image(900, 120, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient band(0, 0, image.width(), 0);
    band.setColorAt(0, QColor(0, 92, 120));
    band.setColorAt(1, QColor(0, 150, 136));
    p.fillRect(image.rect(), band);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setPen(Qt::white);
    p.setFont(QFont(u"DejaVu Sans"_s, 30, QFont::Bold));
    p.drawText(image.rect().adjusted(30, 0, -30, -20), Qt::AlignLeft | Qt::AlignVCenter, title);
    p.setFont(QFont(u"DejaVu Sans"_s, 12));
    p.drawText(image.rect().adjusted(32, 0, -30, -12), Qt::AlignLeft | Qt::AlignBottom, u"Special Topics"_s);
    p.end();
    return image;
}

bool InstallDocuments(const QString& dataDir, const QString& programDir, QString* error) {
    const QDir data(dataDir);
    const QString handOuts = QDir(programDir).filePath(u"Bin$01.001"_s);
    const QString topics = QDir(handOuts).filePath(u"HtpBin$1.001"_s);
    if (!copyMissing(data.filePath(u"documents/handouts"_s), handOuts, error) ||
        !copyMissing(data.filePath(u"documents/topics"_s), topics, error))
        return false;
    QList<std::pair<QString, QString>> headers;
    if (!topicHeaders(data.filePath(u"HotTopics.tsv"_s), &headers, error))
        return false;
    for (const auto& [title, image] : headers) {
        const QString target = QDir(topics).filePath(image);
        if (QFileInfo::exists(target))
            continue;
        if (!DrawTopicHeader(title).save(target))
            return fail(error, target + u": the picture can not be written"_s);
    }
    return true;
}

} // namespace vantrel
