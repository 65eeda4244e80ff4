// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/HtmlChecks.h"

#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace tav::test {

// What an HTML checker would object to in a page. The page is written so
// that an HTML parser and an XML parser read the same tree from it (every
// element closed, only void elements self-closed, attributes quoted, only
// the character references XML knows). So the XML parse proves the nesting
// an HTML parser builds is the one intended, with no tag left open and no
// raw "<" or "&"; the rules below add what XML cannot see and an HTML parser
// would repair silently or a validator would report: lists that hold only
// items, text blocks that hold no blocks (a <p> would end at a list), known
// elements only, unique ids, links that land, nothing from outside.
QStringList htmlProblems(const QByteArray& page)
{
    QStringList problems;
    if (!page.startsWith("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\" />"))
        problems << QStringLiteral("no HTML5 doctype, language and leading UTF-8 declaration");
    static const QRegularExpression selfClosed(QStringLiteral("<(\\w+)[^>]*/>"));
    for (const auto& match : selfClosed.globalMatch(QString::fromUtf8(page)))
        if (match.captured(1) != QLatin1String("meta"))
            problems << QStringLiteral("self-closed <%1>").arg(match.captured(1));
    if (page.contains("</meta>"))
        problems << QStringLiteral("an end tag for a void element");

    static const QSet<QString> known = {"html", "head", "meta", "title", "style", "body", "header",
                                        "h1",   "h2",   "dl",   "dt",    "dd",    "div",  "p",
                                        "main", "ol",   "ul",   "li",    "span",  "a",    "footer"};
    static const QSet<QString> blocks = {"p",      "div",  "ol",     "ul", "li", "dl",
                                         "header", "main", "footer", "h1", "h2"};
    static const QSet<QString> inlineOnly = {"p", "h1", "h2", "span", "a", "dt", "title"};
    QXmlStreamReader xml(page);
    QStringList open;
    QSet<QString> ids;
    QStringList targets;
    bool titled = false;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::EntityReference)
            problems << QStringLiteral("entity &%1;").arg(xml.name());
        if (token == QXmlStreamReader::EndElement)
            open.removeLast();
        if (token == QXmlStreamReader::Characters && open.value(open.size() - 1) == "title")
            titled = !xml.text().trimmed().isEmpty();
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString name = xml.name().toString();
        const QString parent = open.value(open.size() - 1);
        if (!known.contains(name))
            problems << QStringLiteral("unknown element <%1>").arg(name);
        if ((name == "li") != (parent == "ol" || parent == "ul"))
            problems << QStringLiteral("<%1> in <%2>").arg(name, parent);
        if (blocks.contains(name) && inlineOnly.contains(parent))
            problems << QStringLiteral("block <%1> in <%2>").arg(name, parent);
        if ((parent == "dl" && name != "div") ||
            ((name == "dt" || name == "dd") && parent != "div"))
            problems << QStringLiteral("<%1> in <%2>").arg(name, parent);
        if (name == "a" && open.contains("a"))
            problems << QStringLiteral("a link in a link");
        const QXmlStreamAttributes attributes = xml.attributes();
        if (attributes.hasAttribute("src") || name == "script")
            problems << QStringLiteral("outside resource or script");
        if (const QString id = attributes.value("id").toString(); !id.isEmpty()) {
            if (ids.contains(id))
                problems << QStringLiteral("id %1 twice").arg(id);
            ids.insert(id);
        }
        if (attributes.hasAttribute("href"))
            targets << attributes.value("href").toString();
        open << name;
    }
    for (const QString& target : targets)
        if (!target.startsWith('#') || !ids.contains(target.mid(1)))
            problems << QStringLiteral("link to %1 leads nowhere").arg(target);
    if (xml.hasError())
        problems << QStringLiteral("not well-formed at line %1: %2")
                        .arg(xml.lineNumber())
                        .arg(xml.errorString());
    if (!titled)
        problems << QStringLiteral("no title");
    return problems;
}

QStringList mainLines(const QByteArray& page)
{
    QXmlStreamReader xml(page);
    QStringList lines;
    QStringList open;  // "name.class" of the elements open
    int lists = 0, capturing = 0;
    bool inMain = false;
    QString text;
    while (!xml.atEnd()) {
        const auto token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QString name = xml.name().toString();
            const QString cls = xml.attributes().value("class").toString();
            open << name + '.' + cls;
            inMain = inMain || name == "main";
            lists += name == "ol" && cls.startsWith("children");
            if (capturing > 0) {
                ++capturing;
            } else if (inMain && (name == "p" || name == "h2" || cls == "note")) {
                capturing = 1;
                const int shift = cls == "marriage" || (name == "p" && cls == "note") ? 2 : 0;
                text = QString(4 * lists + shift, ' ');
            }
        } else if (token == QXmlStreamReader::EndElement) {
            const QString closed = open.takeLast();
            lists -= closed.startsWith("ol.children");
            inMain = inMain && closed != "main.";
            if (capturing > 0 && --capturing == 0)
                lines << text;
        } else if (token == QXmlStreamReader::Characters && capturing > 0) {
            text += xml.text();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return lines;
}

}  // namespace tav::test
