// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/Messages.h"
#include "app/Session.h"

#include "tests/QtPrinters.h"
#include <QByteArray>
#include <QDir>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <initializer_list>

namespace tav::test {

// Joins lines with the given line ending (after every line, the last included).
QByteArray gedcomText(std::initializer_list<const char*> lines, const char* eol = "\n");

// A file's bytes; empty when it cannot be read.
QByteArray fileBytes(const QString& path);

// The texts of every <text> element of an SVG; a failure when it is not well formed.
QStringList svgTexts(const QByteArray& svg);

// The folder of real GEDCOM files beside the project, or "" when absent.
QString sharedGedcomFile(const char* name);

// A session with recorded message boxes and files written to a private folder.
// The current folder, which windows and tav-cli may change, is put back at the end.
class SessionTest : public ::testing::Test {
protected:
    SessionTest();
    ~SessionTest() override { QDir::setCurrent(startFolder); }

    // Writes the bytes to a file and loads it as the viewer would.
    bool load(const QByteArray& bytes, const char* fileName = "test.ged");
    QString writeFile(const QByteArray& bytes, const char* fileName) const;

    const Individual& ind(int32_t slot) const { return session.records.individual(slot); }
    const Family& fam(int32_t slot) const { return session.records.family(slot); }
    // The slots an individual's k-th FAMS, its FAMC and a family's k-th CHIL name.
    int32_t spouseFamily(int32_t slot, int k) const
    {
        return session.records.spouseFamilyOf(ind(slot), k);
    }
    int32_t childFamily(int32_t slot) const { return session.records.childFamilyOf(ind(slot)); }
    int32_t child(int32_t family, int k) const { return session.records.childOf(fam(family), k); }
    // A cross-reference code as text: "I12".
    QString xref(int32_t code) const { return session.records.xrefText(code); }
    // How two individuals are related, the lines parted by "\n".
    QString relate(int32_t a, int32_t b) const;

    QString startFolder = QDir::currentPath();
    QTemporaryDir dir;
    RecordingMessages messages;
    Session session{messages};
};

}  // namespace tav::test

// Skips the test when the real files are not beside the project.
#define TAV_REQUIRE_SHARED_FILE(var, name)                                                         \
    const QString var = ::tav::test::sharedGedcomFile(name);                                       \
    if (var.isEmpty())                                                                             \
    GTEST_SKIP() << "../shared/gedcom/" << name << " is not present"
