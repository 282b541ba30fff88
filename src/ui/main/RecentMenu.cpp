#include "ui/main/RecentMenu.h"

#include "platform/Strings.h"

#include <QDir>
#include <QFontMetrics>
#include <QLocale>

namespace wendmark {

namespace {

// Of what a window of usual size has room for, in widths of a letter.
constexpr int longestTitle = 40;
constexpr int longestFolder = 50;

QString cut(const QString& text, const QFontMetrics& metrics, int letters) {
    return metrics.elidedText(text, Qt::ElideMiddle, letters * metrics.averageCharWidth());
}

/// As it is to be read, not as an access key.
QString withoutAccessKeys(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// The first nine by their number, the tenth by 0.
QString numbered(qsizetype number) {
    const QString digits = QString::number(number);
    return digits.chopped(1) + QLatin1Char('&') + digits.back();
}

QString timeOf(const RecentTour& tour) {
    return QLocale().toString(tour.time, QLocale::ShortFormat);
}

/// The time stands where other menus have the keys.
QString itemText(const QString& name, const QString& time) {
    return name + QLatin1Char('\t') + time;
}

QString toolTipFor(const RecentTour& tour) {
    const QString folder = onOneLine(QDir::toNativeSeparators(tour.folder));
    return QStringLiteral("<p>%1<br>%2<br>%3</p>")
        .arg(plain(onOneLine(tour.title)), plain(folder), plain(timeOf(tour)));
}

} // namespace

RecentMenu::RecentMenu(SettingsStore& settings, QWidget* parent) : QMenu(parent), m_tours(settings) {
    setObjectName(QStringLiteral("recentTours"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
    connect(&m_looks, &FolderLooks::looked, this, &RecentMenu::showLook);
    fill();
}

void RecentMenu::fill() {
    clear();
    m_items.clear();
    m_looks.forget();
    const QList<RecentTour> tours = m_tours.list();
    for (qsizetype i = 0; i < tours.size(); ++i)
        addTour(tours.at(i), i + 1);
    if (tours.isEmpty())
        addAction(tr("No tours so far"))->setEnabled(false);
    addSeparator();
    QAction* const clearList = addAction(tr("&Clear List"), this, [this] { m_tours.clear(); });
    clearList->setObjectName(QStringLiteral("recentClear"));
    clearList->setEnabled(!tours.isEmpty());
}

void RecentMenu::addTour(const RecentTour& tour, qsizetype number) {
    const QFontMetrics metrics = fontMetrics();
    const QString title = cut(onOneLine(tour.title), metrics, longestTitle);
    const QString folder = cut(onOneLine(QDir::toNativeSeparators(tour.folder)), metrics, longestFolder);
    QAction* const item =
        addAction(itemText(numbered(number) + QLatin1Char(' ') +
                               withoutAccessKeys(title.isEmpty() ? folder : tr("%1 – %2").arg(title, folder)),
                           timeOf(tour)));
    item->setObjectName(QStringLiteral("recentTour%1").arg(number));
    item->setToolTip(toolTipFor(tour));
    connect(item, &QAction::triggered, this, [this, folder = tour.folder] { emit tourChosen(folder); });
    m_items.insert(tour.folder, item);
    m_looks.at(tour.folder);
}

void RecentMenu::showLook(const QString& folder) {
    QAction* const item = m_items.value(folder);
    if (item == nullptr || !item->isEnabled() || m_looks.at(folder).value_or(TourLook{true, {}}).isTour)
        return;
    item->setEnabled(false);
    const QStringList parts = item->text().split(QLatin1Char('\t'));
    item->setText(itemText(tr("%1 (not there)").arg(parts.first()), parts.last()));
}

} // namespace wendmark
