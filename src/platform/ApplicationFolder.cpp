#include "platform/ApplicationFolder.h"

#include "platform/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <filesystem>

namespace wendmark {

namespace {

namespace fs = std::filesystem;

/// Asked by writing, because access rights tell only half of the truth (read-only disks, root).
bool canBeWritten(const QString& folder) {
    QTemporaryFile probe(folder + QStringLiteral("/.wendmark-XXXXXX"));
    return probe.open();
}

/// All of it can be written afterwards, however the installed files and folders are protected.
/// Throws fs::filesystem_error.
void copyWritable(const fs::path& from, const fs::path& to) {
    fs::create_directory(to);
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(from)) {
        const fs::path copy = to / entry.path().lexically_relative(from);
        if (entry.is_directory()) {
            fs::create_directory(copy);
            continue;
        }
        fs::copy_file(entry.path(), copy);
        fs::permissions(copy, fs::perms::owner_write, fs::perm_options::add);
    }
}

/// Copies a folder beside its final name first, so that a copy cut short is never taken for a complete one.
Outcome copyFolder(const QString& from, const QString& to) {
    const fs::path target = to.toStdU16String();
    const fs::path partial = (to + QStringLiteral(".partial")).toStdU16String();
    std::error_code error;
    fs::remove_all(partial, error);
    try {
        copyWritable(fs::path(from.toStdU16String()), partial);
    } catch (const fs::filesystem_error& failure) {
        return Outcome::failure("copy", toUtf8(from) + " to " + toUtf8(to), failure.code());
    }
    fs::rename(partial, target, error);
    return error ? Outcome::failure("make", toUtf8(to), error) : Outcome::success();
}

} // namespace

ApplicationFolder findApplicationFolder(const QString& programFolder, const QString& userDataFolder) {
    if (canBeWritten(programFolder))
        return {Outcome::success(), programFolder};
    const QString own = userDataFolder + QStringLiteral("/Wendmark");
    QDir().mkpath(own);
    Outcome outcome = Outcome::success();
    for (const QString& name :
         {QStringLiteral("Template"), QStringLiteral("Help"), QStringLiteral("MyTours")}) {
        const QString target = own + QLatin1Char('/') + name;
        if (QFileInfo::exists(target))
            continue;
        Outcome copied = copyFolder(programFolder + QLatin1Char('/') + name, target);
        if (!copied.ok())
            outcome = std::move(copied);
    }
    return {std::move(outcome), own};
}

} // namespace wendmark
