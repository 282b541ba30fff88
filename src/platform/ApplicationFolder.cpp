#include "platform/ApplicationFolder.h"

#include "base/Files.h"
#include "platform/Strings.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <filesystem>

namespace wendmark {

namespace {

namespace fs = std::filesystem;

const QString helpFolder = QStringLiteral("Help");

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
    fs::remove_all(target, error);
    fs::rename(partial, target, error);
    return error ? Outcome::failure("make", toUtf8(to), error) : Outcome::success();
}

/// False also when one of the files cannot be read.
bool holdsFilesOf(const QString& from, const QString& to) {
    const fs::path source = from.toStdU16String();
    const fs::path target = to.toStdU16String();
    std::error_code error;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source, error)) {
        const files::Contents wanted = files::read(entry.path().string());
        const files::Contents held = files::read((target / entry.path().lexically_relative(source)).string());
        if (entry.is_regular_file(error) && !(held.outcome.ok() && held.bytes == wanted.bytes))
            return false;
    }
    return true;
}

} // namespace

ApplicationFolder findApplicationFolder(const QString& programFolder, const QString& userDataFolder) {
    if (canBeWritten(programFolder))
        return {Outcome::success(), programFolder};
    return fillUserFolder(programFolder, userDataFolder);
}

ApplicationFolder fillUserFolder(const QString& programFolder, const QString& userDataFolder) {
    const QString own = userDataFolder + QStringLiteral("/Wendmark");
    QDir().mkpath(own);
    Outcome outcome = Outcome::success();
    for (const QString& name : {QStringLiteral("Template"), helpFolder, QStringLiteral("MyTours")}) {
        const QString source = programFolder + QLatin1Char('/') + name;
        const QString target = own + QLatin1Char('/') + name;
        // Templates and tours are the author's; the help is that of the program that runs.
        if (QFileInfo::exists(target) && (name != helpFolder || holdsFilesOf(source, target)))
            continue;
        Outcome copied = copyFolder(source, target);
        if (!copied.ok())
            outcome = std::move(copied);
    }
    return {std::move(outcome), own};
}

} // namespace wendmark
