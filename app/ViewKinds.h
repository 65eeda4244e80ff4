// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>

namespace tav {

class RecordStore;

// What the record browser shows: one record of a kind, or a list of every
// record of a kind.
enum class ViewKind {
    None,
    Individual,
    Family,
    Source,
    Note,
    AllIndividuals,
    AllFamilies,
    AllSources,
    AllNotes,
    AllOccupations,
    AllBirths,
    AllDeaths,
    AllMarriages,
};

constexpr bool isRecordKind(ViewKind kind)
{
    return kind >= ViewKind::Individual && kind <= ViewKind::Note;
}
constexpr bool isListKind(ViewKind kind) { return kind >= ViewKind::AllIndividuals; }

// The code of a kind as the browser's history keeps it and tav-cli takes it:
// "IND", "FAM", "SOU", "NOT", "ALLINDS" ... "ALLMARR"; "" for None.
QString viewKindCode(ViewKind kind);
// The kind of a code, None when it names none.
ViewKind viewKindFromCode(QStringView code);

// The records of a record kind in the file, and the word for one of them
// ("individual", "family", "source", "note").
int32_t recordCount(const RecordStore& records, ViewKind kind);
QString recordNoun(ViewKind kind);
// True when `slot` names a record of a record kind: 1 to its count.
bool namesRecord(const RecordStore& records, ViewKind kind, int64_t slot);
// "There is no individual N in this file.", N as the user gave it.
QString noSuchRecordText(ViewKind kind, const QString& number);

// Which window opened the browser: its Next and Previous step through the
// records of the file, or through the find results.
enum class BrowserCaller { MainWindow, FindWindow };

// The browser's four moves, and the toolbar key of each.
enum class BrowserMove { Back, Forward, Previous, Next };
QString browserMoveKey(BrowserMove move);

}  // namespace tav
