#pragma once

#include <QSplitter>

class QScrollArea;

namespace wendmark {

class SettingsStore;

/// The page in the site editor and the bookmarks below it, with a border that the author can drag. The page
/// comes first: bookmarks that have no room scroll.
class SitePanes final : public QSplitter {
    Q_OBJECT

public:
    explicit SitePanes(QWidget* parent);

    /// Takes both. The bookmarks get the height that the author has last given them.
    void setPanes(QWidget* page, QWidget* bookmarks, const SettingsStore& settings);

    /// Keeps that height.
    void store(SettingsStore& settings) const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    QScrollArea* m_bookmarks;
    int m_wanted = 0;       ///< Height of the bookmarks, in pixels; 0: their usual share.
    bool m_dragged = false; ///< By the author, in this window.
    bool m_placed = false;
};

} // namespace wendmark
