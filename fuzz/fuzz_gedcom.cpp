// SPDX-License-Identifier: GPL-3.0-or-later
// Fuzz target: a GEDCOM file, loaded as the viewer loads it, then walked by
// everything that reads what it loaded: every grid and list of the record
// browser with its links and moves, find, the fifteen queries, the
// relationship finder, descendant counting, the tree window, the
// ancestors chart and the text and HTML reports. Its lines are also read in
// small pieces, as files are, and must be the lines of the whole buffer.
#include "app/GedcomLoading.h"
#include "app/Session.h"
#include "calc/DescendantCounting.h"
#include "calc/Names.h"
#include "calc/RelationshipFinder.h"
#include "core/FileLines.h"
#include "core/LineSplitter.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/TreeDriving.h"
#include "reports/HtmlAncestorsReport.h"
#include "reports/HtmlDescendantsReport.h"
#include "reports/ReportKinds.h"
#include "tree/TreeDrawing.h"
#include "tree/TreeLayout.h"
#include "windowlogic/ancestors/AncestorsWindowLogic.h"
#include "windowlogic/browser/BrowserLogic.h"
#include "windowlogic/find/FindLogic.h"
#include "windowlogic/main/HeaderInformation.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <set>

using namespace tav;

namespace {

// Slots worth showing of a table of `count` records: the first two, the
// last, and one past it (refused by the windows, shown empty).
std::set<int32_t> someSlots(int32_t count)
{
    std::set<int32_t> chosen;
    for (int32_t slot : {1, 2, count, count + 1}) {
        if (slot >= 1)
            chosen.insert(slot);
    }
    return chosen;
}

// Every cell of the grid (a list's first 300 rows), the first rows followed
// as a click follows them and undone with Back, and the browser's moves.
void readAndClickEveryRow(Session& session, ViewKind kind, int32_t slot)
{
    BrowserLogic browser(session);
    session.browser.viewKind = kind;
    if (isRecordKind(kind))
        session.currentSlot(kind) = slot;
    if (!browser.gridLoad())
        return;
    const int32_t rows = std::min(browser.rowCount(), 300);
    for (int32_t row = 0; row < rows; ++row) {
        for (int column = 0; column < 3; ++column)
            browser.cell(row, column);
    }
    for (int32_t row = 1; row < std::min(rows, isRecordKind(kind) ? 12 : 4); ++row) {
        const QString shown = browser.positionToken();
        browser.rowClicked(row);
        if (browser.positionToken() != shown)
            browser.moveBackForward(BrowserMove::Back);
    }
    if (!isRecordKind(kind))
        return;
    for (BrowserMove move :
         {BrowserMove::Next, BrowserMove::Previous, BrowserMove::Back, BrowserMove::Forward})
        browser.moveBackForward(move);
    browser.listAll();
}

void walkBrowser(Session& session)
{
    const RecordStore& records = session.records;
    for (ViewKind kind : {ViewKind::AllIndividuals, ViewKind::AllFamilies, ViewKind::AllSources,
                          ViewKind::AllNotes, ViewKind::AllOccupations, ViewKind::AllBirths,
                          ViewKind::AllDeaths, ViewKind::AllMarriages})
        readAndClickEveryRow(session, kind, 0);
    for (ViewKind kind :
         {ViewKind::Individual, ViewKind::Family, ViewKind::Source, ViewKind::Note}) {
        for (int32_t slot : someSlots(recordCount(records, kind)))
            readAndClickEveryRow(session, kind, slot);
    }
}

void walkFind(Session& session)
{
    // Everything (an empty word is in every text), and words of a name.
    const QString name = session.records.individual(1).name.toString();
    for (const QString& text : {QString(), name.left(3) + QLatin1Char(' ') + name.right(2)}) {
        FindLogic find(session);
        find.searchText = text;
        find.caseSensitive = !text.isEmpty();
        find.find();
        find.lineChosen(0);
        find.lineChosen(int(find.lines().size()) - 1);
    }
}

void walkQueries(Session& session)
{
    for (int index = 0; index < queryCount; ++index) {
        FindLogic find(session);
        find.queryChosen(queryAt(index));
        if (find.numberEnabled()) {
            for (const char* n : {"2", "x"}) {
                find.numberText = QString::fromLatin1(n);
                find.go();
            }
        }
        find.lineChosen(0);
        find.limitNote();
    }
}

void walkFamilies(Session& session)
{
    const RecordStore& records = session.records;
    DescendantCache& cache = session.descendantCache;
    const int32_t count = records.individualCount();
    for (const auto& pair : {std::pair{1, 2}, {count, 1}, {count / 2, count / 2}}) {
        const int32_t a = pair.first, b = pair.second;
        if (a >= 1 && b >= 1)
            session.guarded([&] { relationshipText(records, a, b, session.lineSeparator); });
    }
    for (int32_t slot : someSlots(count)) {
        session.guarded([&] {
            countDescendants(records, cache, slot);
            countDescendantSpouses(records, cache, slot);
            countGenerations(records, cache, slot);
            largestFamilySlot(records, cache, slot);
        });
    }
}

void walkReports(Session& session)
{
    for (ReportKind kind : {ReportKind::Basic, ReportKind::GivenNames, ReportKind::ChildNaming,
                            ReportKind::GedcomIntegrity})
        reportText(session, kind);
    headerInformationLines(session.records);
    loadedCaption(session.records);
    // The years label of the tree's boxes and the HTML report.
    for (int32_t slot = 1; slot <= std::min(session.records.individualCount(), 300); ++slot)
        personYears(session.records, slot, session.today());
}

// The three walks down from an individual, each laid out and drawn, as
// tav-cli builds them (the window itself uses two of them).
void walkEveryWay(Session& session, int32_t slot)
{
    const fuzz::CharacterMeasure measure(2);
    TreeModel model(session.records, session.descendantCache, session.settings, session.tree,
                    [&session] { return session.today(); });
    for (int walk = 0; walk < 3; ++walk) {
        session.guarded([&] {
            model.clearArrays(1, 1);
            model.prepareTopPerson(slot, measure);
            switch (walk) {
            case 0: model.prepareDescendents3(1, 0, 0); break;
            case 1: model.prepareDescendents(1, 0, 1); break;
            default: model.prepareDescendents2(1, 0, 1); break;
            }
            layoutManager(model, measure, generationGap(2));
            treeDrawing(model, session.records, session.settings, 1);
        });
    }
}

// The ancestors chart of ten generations: its keys, a new root and Back,
// and its HTML report.
void walkAncestors(Session& session, int32_t slot)
{
    session.settings.ancestorGenerations = Ahnentafel::maxGenerations;
    session.curInd = slot;
    AncestorsWindowLogic chart(
        session, [](int fontSize) { return std::make_unique<fuzz::CharacterMeasure>(fontSize); });
    chart.activate();
    for (const AncestorsMove move : {AncestorsMove::Father, AncestorsMove::Mother,
                                     AncestorsMove::Parent, AncestorsMove::Child})
        chart.move(move);
    chart.run(AncestorsCommand::SetRoot);
    chart.run(AncestorsCommand::Back);
    chart.setGenerations(Ahnentafel::minGenerations);
    htmlAncestorsReport(session.records, session.nameStyle(), session.today(), slot,
                        Ahnentafel::maxGenerations);
}

// The tree window opened on a few individuals, each with the three walks
// and every command (the options and font sizes on the first, as they
// relabel the whole view and cost the most); the HTML report of each.
void walkTree(Session& session)
{
    const int32_t count = session.records.individualCount();
    for (int32_t slot : someSlots(count)) {
        if (slot > count)
            continue;
        walkEveryWay(session, slot);
        session.curInd = slot;
        session.tree.treeBuilt = false;
        TreeWindowLogic tree = fuzz::newTreeWindow(session);
        tree.activate();
        if (slot == 1)
            fuzz::driveTreeWindow(tree);
        else
            fuzz::driveTreeCommands(tree);
        session.guarded([&] {
            htmlDescendantsReport(session.records, session.descendantCache, session.nameStyle(),
                                  session.today(), slot);
        });
        walkAncestors(session, slot);
    }
}

// Everything that reads a loaded file, in the order a user might go.
using Walk = void (*)(Session&);
const Walk walks[] = {walkBrowser, walkFind, walkQueries, walkFamilies, walkTree, walkReports};

// One session for every run, brought back to the state of a new one: a
// new store would cost more than the run (its tables are reserved whole,
// and the address sanitizer marks every byte of them on each allocation).
// Whatever state a window adds to the session is reset here too, so that
// a finding replays from its input alone.
Session& newSession()
{
    static fuzz::QuietMessages messages;
    static Session session(messages);
    session.setToday(fuzz::fuzzToday());
    session.records.resetRecords();
    session.records.fileName.clear();
    session.records.headerDate.clear();
    session.records.characterSet.clear();
    session.settings = Settings{};
    session.curInd = session.curFam = session.curSou = session.curNote = 0;
    session.lineSeparator = QStringLiteral("\r\n");
    session.report = Report{};
    session.browser = BrowserRequest{};
    session.onTop = KeepOnTopFlags{};
    session.tree = TreeFlags{};
    session.relFirst = 0;
    session.findResults = FindResults{};
    return session;
}

// The file's lines read in small pieces must be the lines of the whole
// buffer, an over-long one perhaps cut after its first longest + 1 bytes.
void checkPieces(const QByteArray& bytes)
{
    constexpr qsizetype longest = 64;
    qsizetype at = 0;
    const qint64 step = 1 + bytes.size() % 7;
    FileLines pieces(
        [&](char* into, qint64 most, QString&) -> qint64 {
            const qint64 n = std::min({most, step, qint64(bytes.size() - at)});
            std::copy_n(bytes.constData() + at, n, into);
            at += n;
            return n;
        },
        bytes.size(), longest, 32);
    LineSplitter whole(bytes.constData(), bytes.size());
    const char *line, *expected;
    qsizetype length, expectedLength;
    while (whole.next(expected, expectedLength)) {
        if (!pieces.next(line, length))
            std::abort();
        const bool same = length == expectedLength
                              ? std::equal(line, line + length, expected)
                              : length > longest && expectedLength > longest &&
                                    std::equal(line, line + longest + 1, expected);
        if (!same)
            std::abort();
    }
    if (pieces.next(line, length))
        std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    Session& session = newSession();
    QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    checkPieces(bytes);
    loadGedcomBytes(session, QStringLiteral("fuzz.ged"), bytes);
    for (Walk walk : walks)
        walk(session);
    return 0;
}
