#include "cli/CliRun.h"

#include "app/Session.h"
#include "calc/Ahnentafel.h"
#include "core/DisplayText.h"
#include "core/TableText.h"
#include "windowlogic/browser/BrowserLogic.h"

namespace tav {

void CliRun::printReport(const QString& text) const
{
    for (const QString& line : withNewlines(text).split(QLatin1Char('\n')))
        print(line);
}

void CliRun::printBytes(const QByteArray& bytes) const
{
    if (output.bytes) {
        output.bytes(bytes);
        return;
    }
    QString text = QString::fromUtf8(bytes);
    if (text.endsWith(QLatin1String("\r\n")))
        text.chop(2);
    for (const QString& line : text.split(QLatin1String("\r\n")))
        print(line);
}

Result<int32_t> CliRun::integerArgument(const QString& text)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok)
        return Outcome::failed(
            usageProblem(QStringLiteral("\"%1\" is not a whole number").arg(text)));
    return value;
}

Result<int32_t> CliRun::slotArg(qsizetype i, ViewKind kind) const
{
    const Result<int32_t> slot = intArg(i);
    if (slot && !namesRecord(session.records, kind, *slot))
        return Outcome::failed(noSuchRecordText(kind, args.value(i)));
    return slot;
}

int CliRun::refuse(const QString& message) const
{
    for (const QString& line : message.split(QLatin1Char('\n')))
        output.err(line);
    return refusedStatus;
}

int CliRun::run(const std::function<void()>& routine) const
{
    return session.guarded(routine) ? 0 : 3;
}

Result<int32_t> generationsArgument(const QString& text)
{
    const Result<int32_t> number = CliRun::integerArgument(text);
    if (number && (*number < Ahnentafel::minGenerations || *number > Ahnentafel::maxGenerations))
        return Outcome::failed(usageProblem(QStringLiteral("--generations takes %1 to %2")
                                                .arg(Ahnentafel::minGenerations)
                                                .arg(Ahnentafel::maxGenerations)));
    return number;
}

QString escaped(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        switch (c.unicode()) {
        case u'\\': out += QLatin1String("\\\\"); break;
        case u'\r': out += QLatin1String("\\r"); break;
        case u'\n': out += QLatin1String("\\n"); break;
        case u'\t': out += QLatin1String("\\t"); break;
        default: out += c;
        }
    }
    return out;
}

void printGridCsv(const CliRun& run, const BrowserLogic& browser)
{
    run.printBytes(csvBytes(browser.table()));
}

void printGrid(const CliRun& run, const BrowserLogic& browser)
{
    run.print(browser.caption());
    const bool family = run.session.browser.viewKind == ViewKind::Family;
    for (int32_t row = 0; row < browser.rowCount(); ++row) {
        QString line =
            escaped(browser.cell(row, 0)) + QLatin1Char('\t') + escaped(browser.cell(row, 1));
        if (family && !browser.cell(row, 2).isEmpty())
            line += QLatin1Char('\t') + escaped(browser.cell(row, 2));
        run.print(line);
    }
}

}  // namespace tav
