#include "ui/browser/BrowserLogic.h"

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

int32_t lastSlot(const QString& history) { return toLong(leadingNumber(history.right(3))); }

}  // namespace

QString positionTokenFor(const QString& kind, int32_t slot)
{
    if (isRecordKind(kind))
        return QLatin1Char('*') + kind + QStringLiteral("%1").arg(slot, 5, 10, QLatin1Char('0'));
    return QLatin1Char('*') + kind + QLatin1Char(' ');
}

BrowserLogic::BrowserLogic(Session& session) : session_(session) { setArrows(); }

QString BrowserLogic::cell(int32_t row, int column) const
{
    return grid_.cell(session_, row, column);
}

int32_t& BrowserLogic::currentSlot(const QString& kind)
{
    if (kind == QLatin1String("FAM"))
        return session_.curFam;
    if (kind == QLatin1String("SOU"))
        return session_.curSou;
    if (kind == QLatin1String("NOT"))
        return session_.curNote;
    return session_.curInd;
}

void BrowserLogic::activate()
{
    if (session_.listLoaded)
        return;
    gridLoad();
    session_.listLoaded = true;
}

bool BrowserLogic::gridLoad()
{
    const QString kind = session_.viewKind;
    if (isRecordKind(kind))
        return session_.guarded([&] { load(kind, currentSlot(kind)); });
    if (isListKind(kind))
        return session_.guarded([&] { load(kind, 0); });
    return true;
}

void BrowserLogic::load(const QString& kind, int32_t slot)
{
    commit(gridFor(session_, kind, slot), kind, slot);
}

void BrowserLogic::commit(Grid grid, const QString& kind, int32_t slot)
{
    session_.viewKind = kind;
    if (isRecordKind(kind))
        currentSlot(kind) = slot;
    backHistory_ += positionToken_;
    setArrows();
    positionToken_ = positionTokenFor(kind, slot);
    grid_ = std::move(grid);
    if (grid_.fitWindow)
        ++fitRequests_;
}

void BrowserLogic::setArrows()
{
    backEnabled_ = !backHistory_.isEmpty();
    forwardEnabled_ = !forwardHistory_.isEmpty();
    nextPreviousEnabled_ = QStringLiteral("IND FAM SOU NOT").contains(session_.viewKind);
}

void BrowserLogic::moveBackForward(const QString& direction)
{
    session_.guarded([&] {
        if (direction == QLatin1String("Back"))
            back();
        else if (direction == QLatin1String("Forward"))
            forward();
        else if (direction == QLatin1String("Next"))
            step(+1);
        else if (direction == QLatin1String("Previous"))
            step(-1);
    });
    setArrows();
}

void BrowserLogic::back()
{
    if (backHistory_.isEmpty())
        return;
    const QString kind = lastKind(backHistory_, 3);
    const bool record = isRecordKind(kind);
    const bool list = kind == QLatin1String("ALL");
    const QString target = list ? lastKind(backHistory_, 7) : kind;
    const int32_t slot = record ? lastSlot(backHistory_) : 0;
    Grid grid;
    if (record || list)
        grid = gridFor(session_, target, slot);  // may fault: nothing has changed yet
    forwardHistory_ += positionToken_;
    positionToken_.clear();
    session_.viewKind = target;
    if (record || list) {
        backHistory_.chop(tokenLength);
        commit(std::move(grid), target, slot);
    }
}

void BrowserLogic::forward()
{
    if (forwardHistory_.isEmpty())
        return;
    const QString kind = lastKind(forwardHistory_, 3);
    const bool list = kind == QLatin1String("ALL");
    if (!isRecordKind(kind) && !list)
        return;
    const QString target = list ? lastKind(forwardHistory_, 7) : kind;
    const int32_t slot = list ? 0 : lastSlot(forwardHistory_);
    Grid grid = gridFor(session_, target, slot);
    backHistory_ += positionToken_;
    positionToken_.clear();
    if (kind == QLatin1String("IND"))
        forwardHistory_.chop(tokenLength);
    else  // the other kinds take the forward history from the back history
        forwardHistory_ = backHistory_.left(forwardHistory_.size() - tokenLength);
    commit(std::move(grid), target, slot);
}

void BrowserLogic::step(int delta)
{
    const QString kind = session_.viewKind;
    if (!isRecordKind(kind))
        return;
    if (session_.listCaller == QLatin1String("frmFind")) {
        stepThroughResults(delta);
        return;
    }
    const RecordStore& r = session_.records;
    const int32_t count = kind == QLatin1String("IND")   ? r.individualCount()
                          : kind == QLatin1String("FAM") ? r.familyCount()
                          : kind == QLatin1String("SOU") ? r.sourceCount()
                                                         : r.noteCount();
    const int32_t slot = std::max(1, std::min(count, currentSlot(kind) + delta));
    load(kind, slot);
}

// Opened from the find window, Next and Previous walk the find results:
// each kind's results in turn, individuals, families, sources, notes.
void BrowserLogic::stepThroughResults(int delta)
{
    static const char* const kinds[4] = {"IND", "FAM", "SOU", "NOT"};
    int kind = 0;
    while (kind < 4 && session_.viewKind != QLatin1String(kinds[kind]))
        ++kind;
    FindResults& results = session_.findResults;
    const auto count = [&results](int k) { return results[FindResults::Kind(k)].count; };
    int32_t& position = results.selected;
    const int32_t wanted = position + delta;
    if (wanted >= 1 && wanted <= count(kind)) {
        load(QLatin1String(kinds[kind]), results[FindResults::Kind(kind)].entries[size_t(wanted)]);
        position = wanted;
    } else if (delta > 0) {
        if (kind == 3) {
            position = count(3);  // past the last note the position stays
        } else {
            position = 0;
            session_.viewKind = QLatin1String(kinds[kind + 1]);
        }
    } else if (kind == 0) {
        position = 0;
    } else {
        session_.viewKind = QLatin1String(kinds[kind - 1]);
        position = count(kind - 1) + 1;
    }
}

void BrowserLogic::listAll()
{
    session_.viewKind = session_.viewKind == QLatin1String("ALLINDS") ? QStringLiteral("ALLFAMS")
                                                                      : QStringLiteral("ALLINDS");
    session_.listCaller = QStringLiteral("frmTav");
    gridLoad();
}

void BrowserLogic::rowClicked(int32_t row)
{
    if (row < 1 || row >= rowCount())
        return;
    const QString item = cell(row, 0);
    const QString kind = session_.viewKind;
    session_.guarded([&] {
        if (grid_.listKind.isEmpty()) {
            if (kind == QLatin1String("IND") && (item.startsWith(QLatin1String("Fams")) ||
                                                 item.startsWith(QLatin1String("Famc")))) {
                load(QStringLiteral("FAM"), toLong(leadingNumber(cell(row, 1))));
            } else if (kind == QLatin1String("FAM") && (item.startsWith(QLatin1String("Husb")) ||
                                                        item.startsWith(QLatin1String("Wife")) ||
                                                        item.startsWith(QLatin1String("Chil")))) {
                load(QStringLiteral("IND"), toLong(leadingNumber(cell(row, 2))));
            } else if (item.startsWith(QLatin1String("Note")) && kind != QLatin1String("FAM")) {
                followNote(cell(row, 1));
            }
            return;
        }
        const int32_t slot = row;
        const QString& list = grid_.listKind;
        if (list == QLatin1String("ALLFAMS") || list == QLatin1String("ALLMARR"))
            load(QStringLiteral("FAM"), slot);
        else if (list == QLatin1String("ALLSOUR"))
            load(QStringLiteral("SOU"), slot);
        else if (list == QLatin1String("ALLNOTS"))
            load(QStringLiteral("NOT"), slot);
        else
            load(QStringLiteral("IND"), slot);
    });
}

void BrowserLogic::followNote(const QString& note)
{
    const qsizetype a = note.indexOf(QLatin1Char('@'));
    const qsizetype b = a < 0 ? -1 : note.indexOf(QLatin1Char('@'), a + 1);
    if (b > 0 && b - a < 9 && note.mid(a + 1, 1) == QLatin1String("N")) {
        // A reference such as @N12@: the note record whose number it gives.
        const int32_t id = digitsValue(note.mid(a, b - a + 1));
        const RecordStore& r = session_.records;
        for (int32_t n = 1; n <= r.noteCount(); ++n) {
            if (r.note(n).id == id) {
                load(QStringLiteral("NOT"), n);
                return;
            }
        }
        session_.messages().message(
            QStringLiteral("There is no note %1 in this file.").arg(note.mid(a, b - a + 1)));
        return;
    }
    session_.reportText = note;
    session_.reportTitle = QStringLiteral("Note");
    session_.showWindow(AppWindow::Text);
}

}  // namespace tav
