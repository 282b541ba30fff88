#pragma once

#include <QMenu>

class QWebEngineView;

namespace wendmark {

/// The menu of the right mouse button over a page: commands of the window, then those for fields and words,
/// enabled by what the pointer is over. One menu for good: what it begins may handle events, and must find it
/// when it comes back.
class PageMenu final : public QMenu {
    Q_OBJECT

public:
    /// The actions must outlive it, and so must the view, whose page is set.
    PageMenu(QWebEngineView& view, const QList<QAction*>& actions, QWidget* parent);

private:
    void enableEditing();

    QWebEngineView& m_view;
};

} // namespace wendmark
