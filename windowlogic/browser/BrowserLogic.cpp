// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/browser/BrowserLogic.h"

#include "app/Session.h"
#include "core/TextNumbers.h"

namespace tav {

namespace {

constexpr qsizetype tokenLength = 9;

// The kind written in the last token of a history: three characters from
// the eighth-last on (the list kind takes seven).
QString lastKind(const QString& history, qsizetype length)
{
    return history.size() >= tokenLength ? history.mid(history.size() - 8, length) : QString();
}

// The slot of the last token: all five of its digits.
int32_t lastSlot(const QString& history) { return toLong(leadingNumber(history.right(5))); }

// The kind of the last token of a history: a record kind, a list kind, or
// None when it is neither.
ViewKind lastViewKind(const QString& history)
{
    const QString kind = lastKind(history, 3);
    if (kind == QLatin1String("ALL"))
        return viewKindFromCode(lastKind(history, 7));
    const ViewKind record = viewKindFromCode(kind);
    return isRecordKind(record) ? record : ViewKind::None;
}

}  // namespace

QString positionTokenFor(ViewKind kind, int32_t slot)
{
    if (isRecordKind(kind))
        return QLatin1Char('*') + viewKindCode(kind) +
               QStringLiteral("%1").arg(slot, 5, 10, QLatin1Char('0'));
    return QLatin1Char('*') + viewKindCode(kind) + QLatin1Char(' ');
}

BrowserLogic::BrowserLogic(Session& session) : session_(session) { setArrows(); }

QString BrowserLogic::cell(int32_t row, int column) const
{
    return grid_.cell(session_, row, column);
}

void BrowserLogic::activate()
{
    if (session_.browser.loaded)
        return;
    gridLoad();
    session_.browser.loaded = true;
}

bool BrowserLogic::gridLoad()
{
    const ViewKind kind = session_.browser.viewKind;
    if (isRecordKind(kind))
        return session_.guarded([&] { load(kind, session_.currentSlot(kind)); });
    if (isListKind(kind))
        return session_.guarded([&] { load(kind, 0); });
    return true;
}

void BrowserLogic::load(ViewKind kind, int32_t slot)
{
    commit(gridFor(session_, kind, slot), kind, slot);
}

void BrowserLogic::commit(Grid grid, ViewKind kind, int32_t slot)
{
    session_.browser.viewKind = kind;
    if (isRecordKind(kind))
        session_.currentSlot(kind) = slot;
    backHistory_ += positionToken_;
    setArrows();
    positionToken_ = positionTokenFor(kind, slot);
    grid_ = std::move(grid);
    shownKind_ = kind;
    shownSlot_ = slot;
    if (grid_.fitWindow)
        ++fitRequests_;
}

void BrowserLogic::setArrows()
{
    backEnabled_ = !backHistory_.isEmpty();
    forwardEnabled_ = !forwardHistory_.isEmpty();
    // The kind is looked for in "IND FAM SOU NOT", where no kind at all is
    // found too.
    const ViewKind kind = session_.browser.viewKind;
    nextPreviousEnabled_ = kind == ViewKind::None || isRecordKind(kind);
    famTreeEnabled_ = kind == ViewKind::Individual || kind == ViewKind::Family;
}

void BrowserLogic::famTree()
{
    const ViewKind kind = session_.browser.viewKind;
    if (kind == ViewKind::Family)
        session_.curInd = session_.records.husbandOf(session_.records.family(session_.curFam));
    else if (kind != ViewKind::Individual)
        return;
    session_.tree.treeBuilt = false;
    session_.showWindow(AppWindow::Tree);
}

int32_t BrowserLogic::shownPerson() const
{
    const ViewKind kind = session_.browser.viewKind;
    if (kind == ViewKind::Individual)
        return session_.curInd;
    if (kind != ViewKind::Family)
        return 0;
    const Family& family = session_.records.family(session_.curFam);
    const int32_t husband = session_.records.husbandOf(family);
    return husband != 0 ? husband : session_.records.wifeOf(family);
}

void BrowserLogic::ancestors()
{
    const int32_t person = shownPerson();
    if (person == 0)
        return;
    session_.curInd = person;
    session_.showWindow(AppWindow::Ancestors);
}

void BrowserLogic::moveBackForward(BrowserMove move)
{
    session_.guarded([&] {
        switch (move) {
        case BrowserMove::Back: back(); break;
        case BrowserMove::Forward: forward(); break;
        case BrowserMove::Next: step(+1); break;
        case BrowserMove::Previous: step(-1); break;
        }
    });
    setArrows();
}

void BrowserLogic::back()
{
    if (backHistory_.isEmpty())
        return;
    const ViewKind target = lastViewKind(backHistory_);
    const bool record = isRecordKind(target);
    const int32_t slot = record ? lastSlot(backHistory_) : 0;
    Grid grid;
    if (target != ViewKind::None)
        grid = gridFor(session_, target, slot);  // may fault: nothing has changed yet
    forwardHistory_ += positionToken_;
    positionToken_.clear();
    session_.browser.viewKind = target;
    if (target != ViewKind::None) {
        backHistory_.chop(tokenLength);
        commit(std::move(grid), target, slot);
    }
}

void BrowserLogic::forward()
{
    if (forwardHistory_.isEmpty())
        return;
    const ViewKind target = lastViewKind(forwardHistory_);
    if (target == ViewKind::None)
        return;
    const int32_t slot = isRecordKind(target) ? lastSlot(forwardHistory_) : 0;
    Grid grid = gridFor(session_, target, slot);
    backHistory_ += positionToken_;
    positionToken_.clear();
    if (target == ViewKind::Individual)
        forwardHistory_.chop(tokenLength);
    else  // the other kinds take the forward history from the back history
        forwardHistory_ = backHistory_.left(forwardHistory_.size() - tokenLength);
    commit(std::move(grid), target, slot);
}

void BrowserLogic::step(int delta)
{
    const ViewKind kind = session_.browser.viewKind;
    if (!isRecordKind(kind))
        return;
    if (session_.browser.caller == BrowserCaller::FindWindow) {
        stepThroughResults(delta);
        return;
    }
    const int32_t count = recordCount(session_.records, kind);
    const int32_t slot = std::max(1, std::min(count, session_.currentSlot(kind) + delta));
    load(kind, slot);
}

// Opened from the find window, Next and Previous walk the find results:
// each kind's results in turn, individuals, families, sources, notes.
void BrowserLogic::stepThroughResults(int delta)
{
    const auto viewKindOf = [](int k) { return ViewKind(int(ViewKind::Individual) + k); };
    const int kind = int(session_.browser.viewKind) - int(ViewKind::Individual);
    FindResults& results = session_.findResults;
    const auto count = [&results](int k) { return results[FindResults::Kind(k)].count; };
    int32_t& position = results.selected;
    const int32_t wanted = position + delta;
    if (wanted >= 1 && wanted <= count(kind)) {
        load(viewKindOf(kind), results[FindResults::Kind(kind)].entries[size_t(wanted)]);
        position = wanted;
    } else if (delta > 0) {
        if (kind == 3) {
            position = count(3);  // past the last note the position stays
        } else {
            position = 0;
            session_.browser.viewKind = viewKindOf(kind + 1);
        }
    } else if (kind == 0) {
        position = 0;
    } else {
        session_.browser.viewKind = viewKindOf(kind - 1);
        position = count(kind - 1) + 1;
    }
}

void BrowserLogic::listAll()
{
    session_.browser.viewKind = session_.browser.viewKind == ViewKind::AllIndividuals
                                    ? ViewKind::AllFamilies
                                    : ViewKind::AllIndividuals;
    session_.browser.caller = BrowserCaller::MainWindow;
    gridLoad();
}

void BrowserLogic::reloadShown()
{
    if (shownKind_ == ViewKind::None)
        return;
    session_.guarded([this] {
        Grid grid = gridFor(session_, shownKind_, shownSlot_);
        grid.fitWindow = false;
        grid_ = std::move(grid);
    });
}

void BrowserLogic::rowClicked(int32_t row)
{
    if (row < 1 || row >= rowCount())
        return;
    const QString item = cell(row, 0);
    const ViewKind kind = session_.browser.viewKind;
    session_.guarded([&] {
        if (!grid_.isList()) {
            if (kind == ViewKind::Individual && (item.startsWith(QLatin1String("Fams")) ||
                                                 item.startsWith(QLatin1String("Famc")))) {
                load(ViewKind::Family, toLong(leadingNumber(cell(row, 1))));
            } else if (kind == ViewKind::Family && (item.startsWith(QLatin1String("Husb")) ||
                                                    item.startsWith(QLatin1String("Wife")) ||
                                                    item.startsWith(QLatin1String("Chil")))) {
                load(ViewKind::Individual, toLong(leadingNumber(cell(row, 2))));
            } else if (item.startsWith(QLatin1String("Note")) && kind != ViewKind::Family) {
                followNote(cell(row, 1));
            }
            return;
        }
        const int32_t slot = row;
        switch (grid_.listKind) {
        case ViewKind::AllFamilies:
        case ViewKind::AllMarriages: load(ViewKind::Family, slot); break;
        case ViewKind::AllSources: load(ViewKind::Source, slot); break;
        case ViewKind::AllNotes: load(ViewKind::Note, slot); break;
        default: load(ViewKind::Individual, slot); break;
        }
    });
}

TextTable BrowserLogic::table() const
{
    TextTable rows;
    rows.reserve(rowCount());
    for (int32_t row = 0; row < rowCount(); ++row)
        rows.append(QStringList{cell(row, 0), cell(row, 1)});
    return rows;
}

void BrowserLogic::followNote(const QString& note)
{
    // A pointer names the note record whose cross-reference it writes.
    if (const QStringView xref = pointedXref(note); !xref.isEmpty()) {
        if (const int32_t n = session_.records.noteIndexFromId(xref))
            load(ViewKind::Note, n);
        else
            session_.messages().warning(
                QStringLiteral("There is no note %1 in this file.").arg(note.trimmed()));
        return;
    }
    const qsizetype a = note.indexOf(QLatin1Char('@'));
    const qsizetype b = a < 0 ? -1 : note.indexOf(QLatin1Char('@'), a + 1);
    if (b > 0 && b - a < 9 && note.mid(a + 1, 1) == QLatin1String("N")) {
        // A reference such as @N12@ within a text: the note record whose
        // number it gives.
        const int64_t id = digitsValue(note.mid(a, b - a + 1));
        const RecordStore& r = session_.records;
        for (int32_t n = 1; n <= r.noteCount(); ++n) {
            if (r.note(n).id == id) {
                load(ViewKind::Note, n);
                return;
            }
        }
        session_.messages().warning(
            QStringLiteral("There is no note %1 in this file.").arg(note.mid(a, b - a + 1)));
        return;
    }
    session_.showReport(note, QStringLiteral("Note"));
}

}  // namespace tav
