#include "settings/RegFile.h"
#include "settings/RegistryBackend.h"

#include "core/AtomicFile.h"

#include <QFile>

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
        const Result<RegFile::Reading> read = file_.load();
        if (!read) {
            // An unreadable file is never replaced.
            problems_ << QStringLiteral("the settings file %1 cannot be read (%2); the defaults "
                                        "are used and it is not written over")
                             .arg(path, read.message());
            unwritable_ = Outcome::failed(
                QStringLiteral("Cannot save %1: it could not be read when Tav started "
                               "(%2), so it is left as it is.")
                    .arg(path, read.message()));
            return;
        }
        for (const QString& problem : read->problems)
            problems_ << QStringLiteral("the settings file %1, %2: the line is skipped")
                             .arg(path, problem);
        // The bytes of a damaged file are kept beside it before it is first
        // replaced.
        if (!read->problems.isEmpty())
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

    // Writes the damaged file's bytes to "Tav.reg.damaged" (or, when that
    // holds other bytes already, "Tav.reg.damaged.1" and so on), once.
    Outcome keepDamagedCopy()
    {
        if (damagedBytes_.isEmpty())
            return {};
        for (int n = 0; n < 100; ++n) {
            const QString path =
                file_.path() + QStringLiteral(".damaged") + (n ? QStringLiteral(".%1").arg(n) : "");
            QFile existing(path);
            if (existing.exists()) {
                if (existing.open(QIODevice::ReadOnly) && existing.readAll() == damagedBytes_)
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

    RegFile file_;
    QStringList problems_;
    QByteArray damagedBytes_;
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
