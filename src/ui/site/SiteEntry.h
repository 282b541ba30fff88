#pragma once

#include <QObject>
#include <QString>

class QUrl;

namespace wendmark {

class AddressBox;
class NoticeBar;
struct ProgramParts;

/// What the author enters to be shown: leads to a page, or says why it is none and offers to search for it.
class SiteEntry final : public QObject {
    Q_OBJECT

public:
    /// All must outlive it.
    SiteEntry(const ProgramParts& parts, AddressBox& box, NoticeBar& notice, QObject* parent);

    /// Nothing happens for blanks alone.
    void enter(const QString& text);

    /// Searches the web for what was entered last.
    void search();

signals:
    void pageWanted(const QUrl& address);

private:
    const ProgramParts& m_parts;
    AddressBox& m_box;
    NoticeBar& m_notice;
    QString m_words; ///< Entered last in the place of an address.
};

} // namespace wendmark
