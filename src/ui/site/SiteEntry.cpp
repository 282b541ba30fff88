#include "ui/site/SiteEntry.h"

#include "commands/TourDocument.h"
#include "platform/Settings.h"
#include "platform/SettingsStore.h"
#include "ui/ProgramParts.h"
#include "ui/site/AddressBox.h"
#include "ui/site/FrameTest.h"
#include "ui/site/HistoryModel.h"
#include "ui/site/NoticeBar.h"
#include "ui/site/SiteAddress.h"

namespace wendmark {

SiteEntry::SiteEntry(const ProgramParts& parts, AddressBox& box, NoticeBar& notice, QObject* parent)
    : QObject(parent), m_parts(parts), m_box(box), m_notice(notice) {}

void SiteEntry::enter(const QString& text) {
    const QString typed = text.trimmed();
    if (typed.isEmpty())
        return;
    if (typed.size() > longestAddress) {
        m_notice.showText(longAddressNotice());
        return;
    }
    const SiteAddress site = siteAddressFrom(typed, m_parts.document.workspace());
    if (!site.address.isEmpty()) {
        emit pageWanted(isTestPage(typed) ? testedPageOf(site.address) : site.address);
        return;
    }
    m_words = typed;
    m_notice.showText(
        QStringLiteral("%1 %2").arg(tr("\"%1\" is not an address.").arg(typed), site.missing).trimmed(),
        false, site.isWords);
    m_box.setFocus(); // What was typed stays, for the author to mend.
}

void SiteEntry::search() {
    emit pageWanted(searchAddress(m_parts.settings.read(siteSettings::searchPage), m_words));
}

} // namespace wendmark
