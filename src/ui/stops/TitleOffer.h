#pragma once

#include <QPushButton>

class QUrl;
class QWebEngineProfile;

namespace wendmark {

class PageTitle;

/// Offers the title of a stop's page for the stop: a button that is shown once that title is known.
class TitleOffer final : public QPushButton {
    Q_OBJECT

public:
    /// `profile` must outlive it. Local pages lie in this folder.
    TitleOffer(QWebEngineProfile& profile, const QString& folder, QWidget* parent);

    /// Offers the title of this page soon, if it has one.
    void ask(const QUrl& page);

    /// There is nothing to offer, or not any longer.
    void withdraw();

signals:
    /// The author takes this title; as visitors read it, not as HTML.
    void taken(const QString& title);

private:
    void offer(const QString& title);

    PageTitle* m_pageTitle;
    QString m_title;
};

} // namespace wendmark
