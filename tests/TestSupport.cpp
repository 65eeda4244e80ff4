// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/TestSupport.h"

#include "app/GedcomLoading.h"
#include "calc/RelationshipFinder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace tav::test {

QByteArray gedcomText(std::initializer_list<const char*> lines, const char* eol)
{
    QByteArray text;
    for (const char* line : lines) {
        text += line;
        text += eol;
    }
    return text;
}

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList svgTexts(const QByteArray& svg)
{
    QXmlStreamReader xml(svg);
    QStringList texts;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"text")
            texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed();
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return texts;
}

QString sharedGedcomFile(const char* name)
{
    const QString path =
        QDir(QStringLiteral(TAV_SHARED_GEDCOM_DIR)).filePath(QString::fromLatin1(name));
    return QFileInfo::exists(path) ? path : QString();
}

SessionTest::SessionTest() { session.setToday(QDate(2026, 11, 21)); }

QString SessionTest::writeFile(const QByteArray& bytes, const char* fileName) const
{
    const QString path = dir.filePath(QString::fromLatin1(fileName));
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        ADD_FAILURE() << "cannot write " << path.toStdString();
    return path;
}

QString SessionTest::relate(int32_t a, int32_t b) const
{
    return relationshipText(session.records, a, b, QStringLiteral("\n"));
}

bool SessionTest::load(const QByteArray& bytes, const char* fileName)
{
    return loadGedcom(session, writeFile(bytes, fileName)).ok();
}

}  // namespace tav::test
