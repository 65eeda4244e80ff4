// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/RegFile.h"
#include "settings/RegistryBackend.h"

#include "core/AtomicFile.h"
#include "core/FileNames.h"
#include "core/FileReading.h"

#include <cstdio>

namespace tav {

namespace {

QString rootName(int64_t root)
{
    switch (root) {
    case 0x80000000: return QStringLiteral("HKEY_CLASSES_ROOT");
    case 0x80000001: return QStringLiteral("HKEY_CURRENT_USER");
    case 0x80000002: return QStringLiteral("HKEY_LOCAL_MACHINE");
    case 0x80000003: return QStringLiteral("HKEY_USERS");
    case 0x80000005: return QStringLiteral("HKEY_CURRENT_CONFIG");
    case 0x80000006: return QStringLiteral("HKEY_DYN_DATA");
    default: return QString();
    }
}

// The registry as a text file: read once, replaced whole on each change
// (or once per batch of changes).
class FileRegistry : public RegistryBackend {
public:
    explicit FileRegistry(const QString& path) : file_(path)
    {
        const QString shown = shownFileName(path);
        const Result<RegFile::Reading> read = file_.load();
        if (!read) {
            // An unreadable file is never replaced.
            problems_ << QStringLiteral("the settings file %1 cannot be read (%2); the defaults "
                                        "are used and it is not written over")
                             .arg(shown, read.message());
            unwritable_ = Outcome::failed(
                QStringLiteral("Cannot save %1: it could not be read when Tav started "
                               "(%2), so it is left as it is.")
                    .arg(shown, read.message()));
            return;
        }
        if (!read->unusable.isEmpty()) {
            // No settings file at all (a large or a binary file in its
            // place): one note, and the file goes aside whole before the
            // first save.
            problems_ << QStringLiteral("the settings file %1 %2; the defaults are used, and it is "
                                        "kept as %1.damaged when the settings are saved")
                             .arg(shown, read->unusable);
            moveAside_ = true;
            return;
        }
        constexpr qsizetype problemsTold = 20;
        for (const QString& problem : read->problems.mid(0, problemsTold))
            problems_ << QStringLiteral("the settings file %1, %2: the line is skipped")
                             .arg(shown, problem);
        if (read->problems.size() > problemsTold)
            problems_ << QStringLiteral("the settings file %1: %2 more lines that cannot be read "
                                        "are skipped")
                             .arg(shown)
                             .arg(read->problems.size() - problemsTold);
        // The bytes of a damaged file, or of one with lines a save does not
        // keep (comments), are kept beside it before it is first replaced.
        if (!read->problems.isEmpty() || read->dropsLines)
            damagedBytes_ = read->bytes;
    }

    int32_t openKey(int64_t root, const QString& path) override
    {
        return file_.hasKey(keyName(root, path)) ? 0 : notFound;
    }

    int32_t queryValue(int64_t root, const QString& path, const QString& name, uint32_t& type,
                       QByteArray& data) override
    {
        const RegFile::Value* value = file_.value(keyName(root, path), name);
        if (!value)
            return notFound;
        type = value->type;
        data = value->data;
        return 0;
    }

    int32_t createKey(int64_t root, const QString& path) override
    {
        if (!file_.hasKey(keyName(root, path))) {
            file_.createKey(keyName(root, path));
            return store();
        }
        return 0;
    }

    int32_t setValue(int64_t root, const QString& path, const QString& name, uint32_t type,
                     const QByteArray& data) override
    {
        file_.setValue(keyName(root, path), RegFile::Value{name, type, data});
        return store();
    }

    void beginBatch() override
    {
        if (batchDepth_++ == 0)
            written_ = {};
    }
    void endBatch() override
    {
        if (--batchDepth_ == 0 && dirty_)
            store();
    }

    QStringList loadProblems() const override { return problems_; }
    Outcome writeOutcome() const override { return written_; }

private:
    static constexpr int32_t notFound = 2;
    static constexpr int32_t accessDenied = 5;

    static QString keyName(int64_t root, const QString& path)
    {
        return rootName(root) + QLatin1Char('\\') + path;
    }

    int32_t store()
    {
        if (batchDepth_ > 0) {
            dirty_ = true;
            return 0;
        }
        dirty_ = false;
        written_ = unwritable_;
        if (written_)
            written_ = keepDamagedCopy();
        if (written_)
            written_ = file_.save();
        return written_ ? 0 : accessDenied;
    }

    QString damagedPath(int n) const
    {
        return file_.path() + QStringLiteral(".damaged") + (n ? QStringLiteral(".%1").arg(n) : "");
    }

    // Writes the damaged file's bytes to "Tav.reg.damaged" (or, when that
    // holds other bytes already, "Tav.reg.damaged.1" and so on), once; a
    // file that is no settings file is moved there whole.
    Outcome keepDamagedCopy()
    {
        if (moveAside_)
            return moveAside();
        if (damagedBytes_.isEmpty())
            return {};
        for (int n = 0; n < 100; ++n) {
            const QString path = damagedPath(n);
            if (fileKindOf(path) != FileKind::Missing) {
                const Result<QByteArray> existing =
                    readWholeFile(path, RegFile::largestFile, OddFiles::Refused);
                if (existing && *existing == damagedBytes_)
                    break;
                continue;
            }
            if (Outcome kept = writeFileAtomically(path, damagedBytes_); !kept)
                return kept;
            break;
        }
        damagedBytes_.clear();
        return {};
    }

    Outcome moveAside()
    {
        if (fileKindOf(file_.path()) == FileKind::Missing) {  // gone meanwhile: nothing to keep
            moveAside_ = false;
            return {};
        }
        for (int n = 0; n < 100; ++n) {
            const QString path = damagedPath(n);
            if (fileKindOf(path) != FileKind::Missing)
                continue;
            if (std::rename(fileNameToBytes(file_.path()).constData(),
                            fileNameToBytes(path).constData()) != 0)
                break;
            moveAside_ = false;
            return {};
        }
        return Outcome::failed(QStringLiteral("Cannot save %1: it could not be kept beside it as "
                                              "%1.damaged, so it is left as it is.")
                                   .arg(shownFileName(file_.path())));
    }

    RegFile file_;
    QStringList problems_;
    QByteArray damagedBytes_;
    bool moveAside_ = false;  // the file is no settings file: it goes aside whole
    Outcome unwritable_;  // failed when the file is never written, saying why
    Outcome written_;     // the last write, or the batch's
    int batchDepth_ = 0;
    bool dirty_ = false;
};

}  // namespace

std::unique_ptr<RegistryBackend> makeFileRegistry(const QString& path)
{
    return std::make_unique<FileRegistry>(path);
}

}  // namespace tav
