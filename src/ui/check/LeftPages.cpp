#include "ui/check/LeftPages.h"

#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "platform/Strings.h"

namespace wendmark {

namespace {

QString entryFor(Posting posting, Verdict verdict, const std::string& address) {
    return toQString(nameOf(posting)) + QLatin1Char(' ') + toQString(nameOf(verdict)) + QLatin1Char(' ') +
           toQString(address);
}

} // namespace

LeftPages::LeftPages(SettingsStore& settings)
    : m_settings(settings), m_entries(settings.read(checkSettings::left)) {}

bool LeftPages::holds(Posting posting, Verdict verdict, const std::string& address) const {
    return !m_entries.isEmpty() && m_entries.contains(entryFor(posting, verdict, address));
}

void LeftPages::add(Posting posting, Verdict verdict, const std::string& address) {
    const QString entry = entryFor(posting, verdict, address);
    m_entries.removeAll(entry);
    m_entries.append(entry);
    if (m_entries.size() > most)
        m_entries = m_entries.last(most);
    store();
}

void LeftPages::remove(Posting posting, Verdict verdict, const std::string& address) {
    if (m_entries.removeAll(entryFor(posting, verdict, address)) > 0)
        store();
}

void LeftPages::keepOnly(Posting posting, Verdict verdict, const std::string& address) {
    const QString kept = entryFor(posting, verdict, address);
    const QString start = toQString(nameOf(posting)) + QLatin1Char(' ');
    const QString end = QLatin1Char(' ') + toQString(address);
    const auto isOther = [&](const QString& entry) {
        return entry != kept && entry.startsWith(start) && entry.endsWith(end) &&
               entry.count(QLatin1Char(' ')) == kept.count(QLatin1Char(' '));
    };
    if (m_entries.removeIf(isOther) > 0)
        store();
}

void LeftPages::store() {
    m_settings.store(checkSettings::left, m_entries);
}

} // namespace wendmark
