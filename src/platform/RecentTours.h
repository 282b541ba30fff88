#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace wendmark {

class SettingsStore;

/// A tour that was opened or saved.
struct RecentTour {
    QString folder; ///< Absolute, written as it was then.
    QString title;  ///< As visitors read it, on one line; may be shortened, and empty.
    QDateTime time; ///< When it was opened or saved last.
};

/// The tours that the author has worked on last, kept in the settings. A tour is in the list once, however
/// the path of its folder was written. Whether the folders are still there is not looked at.
class RecentTours final {
public:
    static constexpr qsizetype most = 10;

    /// The settings must outlive it.
    explicit RecentTours(SettingsStore& settings);

    /// The latest first, at most `most`. What other runs of the program have noted is among them.
    QList<RecentTour> list() const;

    /// The tour in this folder, whose title is HTML, was opened or saved now.
    void note(const QString& folder, const QString& title, const QDateTime& now);

    void clear();

private:
    SettingsStore& m_settings;
};

} // namespace wendmark
