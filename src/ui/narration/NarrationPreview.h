#pragma once

#include <QPointF>
#include <QWidget>

class QWebEngineProfile;

namespace wendmark {

class BrowserView;

/// Shows a stop's page as the narration frame will show it, without letting it do anything.
class NarrationPreview final : public QWidget {
    Q_OBJECT

public:
    /// Pages may read files of `folder` only, from which their addresses count.
    NarrationPreview(QWebEngineProfile& profile, const QString& folder, QWidget* parent = nullptr);

    /// Shows another version of the page, scrolled to where the former one was.
    void showPage(const QByteArray& html);

private:
    void scrollBack();

    BrowserView* m_browser;
    QString m_folder;
    QPointF m_scrolledTo;
};

} // namespace wendmark
