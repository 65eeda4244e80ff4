// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TreeViewFile.h"

#include "core/AtomicFile.h"
#include "core/Fault.h"
#include "core/FileNames.h"
#include "core/FileReading.h"
#include "core/RecordStore.h"
#include "settings/Settings.h"
#include "tree/TextMeasure.h"
#include "tree/TreeModel.h"


namespace tav {

namespace {

const QLatin1String startMarker("TREEVIEW");
const QLatin1String endMarker("ENDTREEVIEW");

// The loaded GEDCOM file as the view file names it: its full path.
QString gedcomPathOf(const TreeModel& model)
{
    const QString& name = model.records().fileName;
    return name.isEmpty() ? name : absoluteFileName(name);
}

QString quoted(const QString& text) { return QLatin1Char('"') + text + QLatin1Char('"'); }

QString numbers(std::initializer_list<int32_t> values)
{
    QString line;
    for (const int32_t value : values) {
        if (!line.isEmpty())
            line += QLatin1Char(',');
        line += QString::number(value);
    }
    return line;
}

bool isLineEnd(QChar c) { return c == u'\r' || c == u'\n'; }
bool isBlank(QChar c) { return c == u' ' || c == u'\t'; }

// Reads a view file item by item: an item is the text up to the next comma
// or line end, and a string in double quotes is one item without them.
// Line ends only end items.
class ItemReader {
public:
    explicit ItemReader(QString text) : text_(std::move(text)) {}

    // The next item; past the last one, the fault "Input past end of file".
    QString next()
    {
        while (pos_ < text_.size() && (isBlank(text_[pos_]) || isLineEnd(text_[pos_])))
            ++pos_;
        if (pos_ >= text_.size())
            raiseFault(RuntimeFault::InputPastEndOfFile);
        return text_[pos_] == u'"' ? quotedItem() : plainItem();
    }

    // The next item as a whole number; anything else is a type mismatch.
    int32_t number()
    {
        bool ok = false;
        const int32_t value = next().toInt(&ok);
        if (!ok)
            raiseFault(RuntimeFault::TypeMismatch);
        return value;
    }

    // The next number, which must lie from `lowest` to `highest`.
    int32_t numberWithin(int32_t lowest, int32_t highest)
    {
        const int32_t value = number();
        if (value < lowest || value > highest)
            raiseFault(RuntimeFault::SubscriptOutOfRange);
        return value;
    }

private:
    QString plainItem()
    {
        const qsizetype start = pos_;
        while (pos_ < text_.size() && text_[pos_] != u',' && !isLineEnd(text_[pos_]))
            ++pos_;
        const QString item = text_.mid(start, pos_ - start).trimmed();
        skipComma();
        return item;
    }

    // The string closes at the last quote of its line that ends an item, so
    // a name holding quotes or commas reads back whole (the writer puts at
    // most one string on a line).
    QString quotedItem()
    {
        const qsizetype start = ++pos_;
        qsizetype lineEnd = start;
        while (lineEnd < text_.size() && !isLineEnd(text_[lineEnd]))
            ++lineEnd;
        qsizetype close = -1;
        for (qsizetype q = lineEnd - 1; q >= start && close < 0; --q) {
            if (text_[q] != u'"')
                continue;
            qsizetype after = q + 1;
            while (after < lineEnd && isBlank(text_[after]))
                ++after;
            if (after == lineEnd || text_[after] == u',')
                close = q;
        }
        if (close < 0) {
            // An unclosed string runs to the end of its line.
            pos_ = lineEnd;
            return text_.mid(start, lineEnd - start);
        }
        pos_ = close + 1;
        while (pos_ < lineEnd && isBlank(text_[pos_]))
            ++pos_;
        skipComma();
        return text_.mid(start, close - start);
    }

    void skipComma()
    {
        if (pos_ < text_.size() && text_[pos_] == u',')
            ++pos_;
    }

    QString text_;
    qsizetype pos_ = 0;
};

// Reads the persons and families of a view into `view`, checking every
// index against the loaded file and the tree's own tables, and every place,
// size and count against what layout and the walks can make.
void readTables(ItemReader& items, const TreeModel& model, TreeTables& view)
{
    const RecordStore& records = model.records();
    constexpr int32_t limit = TreeTables::geometryLimit;
    constexpr int32_t persons = TreeTables::personCapacity;
    view.nTreeInd = items.numberWithin(1, persons);
    view.nTreeFam = items.numberWithin(0, TreeTables::familyCapacity);
    for (int32_t slot = 1; slot <= view.nTreeInd; ++slot) {
        TreePerson& person = view.person(slot);
        person.indIdx = items.numberWithin(0, records.individualCount());
        person.label = items.next();
        person.childNo = items.numberWithin(0, persons);
        person.descendant = items.numberWithin(0, 1);
        person.x = items.numberWithin(-limit, limit);
        person.width = items.numberWithin(0, limit);
        person.y = items.numberWithin(-limit, limit);
        person.height = items.numberWithin(0, limit);
        if (int64_t(person.x) + person.width > limit || int64_t(person.y) + person.height > limit)
            raiseFault(RuntimeFault::SubscriptOutOfRange);
    }
    const int32_t gap = generationGap(model.settings().FontSize);
    for (int32_t slot = 1; slot <= view.nTreeFam; ++slot) {
        TreeFamily& family = view.family(slot);
        family.famIdx = items.numberWithin(0, records.familyCount());
        family.head = items.numberWithin(1, view.nTreeInd);
        family.indSt = items.numberWithin(1, view.nTreeInd);
        family.childShown = items.numberWithin(0, persons);
        family.layout1 = items.numberWithin(-limit, limit);
        family.layout3 = items.numberWithin(0, limit);
        family.layout2 = items.numberWithin(-limit, limit);
        family.childShown = items.numberWithin(0, persons);
        // What the file does not carry comes from the loaded file and the font.
        family.nChildren = records.family(family.famIdx).childCount;
        if (int64_t(family.indSt) + family.nChildren > view.nTreeInd)
            raiseFault(RuntimeFault::SubscriptOutOfRange);
        family.layout4 = gap;
        family.spouseNo = spouseNumberOf(records, view.person(family.head).indIdx, family.famIdx);
    }
}

}  // namespace

QString treeViewFileName() { return QStringLiteral("temp.gds"); }

QStringList treeViewLines(const TreeModel& model)
{
    QStringList lines;
    lines.reserve(model.nTreeInd + model.nTreeFam + 4);
    lines << quoted(startMarker) << quoted(gedcomPathOf(model))
          << numbers({model.nTreeInd, model.nTreeFam});
    for (int32_t slot = 1; slot <= model.nTreeInd; ++slot) {
        const TreePerson& p = model.person(slot);
        lines << QString::number(p.indIdx) + QLatin1Char(',') + quoted(p.label) + QLatin1Char(',') +
                     numbers({p.childNo, p.descendant, p.x, p.width, p.y, p.height});
    }
    // The family line carries childShown twice, and neither the child
    // count, the generation gap nor the spouse number.
    for (int32_t slot = 1; slot <= model.nTreeFam; ++slot) {
        const TreeFamily& f = model.family(slot);
        lines << numbers({f.famIdx, f.head, f.indSt, f.childShown, f.layout1, f.layout3, f.layout2,
                          f.childShown});
    }
    lines << quoted(endMarker);
    return lines;
}

// The text is UTF-8; a GEDCOM path whose name is other bytes is written
// as those bytes, so the view names the same file when it is read.
Outcome treeSaveToFile(const TreeModel& model, const QString& path)
{
    const QString lineEnd = QStringLiteral("\r\n");
    return writeFileAtomically(path, fileNameToBytes(treeViewLines(model).join(lineEnd) + lineEnd));
}

SavedView treeReadFromFile(const TreeModel& model, const QString& path)
{
    // Not a file (a named pipe, which would wait for a writer for ever, a
    // folder, a device) is no view file either; nor is one larger than a
    // view of the tree's capacity could be.
    const Result<QByteArray> bytes = readWholeFile(path, largestTreeViewFile, OddFiles::Refused);
    if (!bytes)
        raiseFault(RuntimeFault::FileNotFound);
    return treeReadFromText(model, fileNameFromBytes(*bytes));
}

SavedView treeReadFromText(const TreeModel& model, const QString& text)
{
    ItemReader items(text);
    while (items.next() != startMarker) {
    }
    SavedView view;
    view.gedcomPath = items.next();
    view.sameGedcomFile = view.gedcomPath == gedcomPathOf(model);
    readTables(items, model, view.tables);
    items.next();  // the end marker, whatever it says
    return view;
}

QString SavedView::otherFileQuestion() const
{
    return QStringLiteral("This view was saved with %1. Show it anyway?")
        .arg(shownFileName(gedcomPath));
}

void showSavedView(TreeModel& model, SavedView view)
{
    model.treeSavePrev();
    model.treeInd = std::move(view.tables.treeInd);
    model.treeFam = std::move(view.tables.treeFam);
    model.nTreeInd = view.tables.nTreeInd;
    model.nTreeFam = view.tables.nTreeFam;
}

}  // namespace tav
