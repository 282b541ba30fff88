#include "ui/Messages.h"

#include "ui/WindowPlace.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpacerItem>
#include <QWidget>
#include <algorithm>
#include <array>
#include <utility>

namespace wendmark {

namespace {

// Pixels; Qt makes boxes of longer texts 500 wide.
constexpr int usualTextWidth = 400;
constexpr int besideText = 120; // Icon and margins.
constexpr int belowText = 80;   // Margins, and those of the buttons.

constexpr qsizetype longestToolTip = 2000;
constexpr std::array<qsizetype, 5> longestWords = {500, 250, 120, 60, 30};
constexpr QChar breakPoint(0x200B); // Zero-width space.

/// A word that may break behind each of its parts, and anywhere in parts that are wider than a line.
QString breakable(const QString& word, const QFontMetrics& metrics, int width) {
    QString broken;
    QString part;
    for (const QChar letter : word) {
        part += letter;
        const bool isEnd = QStringLiteral("/\\?&=").contains(letter);
        if (!isEnd && metrics.horizontalAdvance(part) < width / 2)
            continue;
        broken += part + breakPoint;
        part.clear();
    }
    return broken + part;
}

/// A word that fits into lines of this width; of one that is longer than `longest`, both ends.
QString fittedWord(QString word, qsizetype longest, const QFontMetrics& metrics, int width) {
    if (word.size() > longest)
        word = word.left(longest / 2) + QChar(0x2026) + word.right(longest / 2);
    return metrics.horizontalAdvance(word) > width ? breakable(word, metrics, width) : word;
}

QString fittedText(const QString& text, qsizetype longestWord, const QFontMetrics& metrics, int width) {
    QString fits;
    QString word;
    for (const QChar letter : text) {
        if (!letter.isSpace()) {
            word += letter;
            continue;
        }
        fits += fittedWord(std::exchange(word, {}), longestWord, metrics, width) + letter;
    }
    return fits + fittedWord(word, longestWord, metrics, width);
}

/// On large screens Qt's boxes leave some of the width alone.
int widestBox(int available) {
    constexpr int largeScreen = 1024;
    return available <= largeScreen ? available : std::clamp(available - 480, 500, 1000);
}

/// Width of a box whose text is wrapped at `usual`; 0: Qt's own, which on small screens is half of them.
int widthOfUsual(const QLabel& text, int usual, int available) {
    constexpr int widestOfQt = 500;
    const int longestLine = text.fontMetrics().size(0, text.text()).width();
    const int needed = std::min(longestLine, usual) + besideText;
    return std::min(needed, widestOfQt) > available / 2 ? needed : 0;
}

/// Puts as much of the words as there is room for into the box. Gives the width that it needs for that, 0:
/// that of any box.
int fitText(QMessageBox& box, const QSize& largest) {
    QLabel shown; // As the box wraps its own.
    shown.setTextFormat(Qt::PlainText);
    shown.setWordWrap(true);
    const QString text = box.text();
    const QFontMetrics metrics = shown.fontMetrics();
    const int height = largest.height() - belowText - 2 * metrics.lineSpacing();
    const int usual = std::min(usualTextWidth, largest.width() - besideText);
    const int widest = widestBox(largest.width()) - besideText;
    for (const qsizetype longest : longestWords) {
        for (const int width : {usual, widest}) {
            box.setText(fittedText(text, longest, metrics, width));
            shown.setText(box.text());
            if (shown.heightForWidth(width) <= height)
                return width == usual ? widthOfUsual(shown, usual, largest.width()) : widest + besideText;
        }
    }
    return widest + besideText;
}

} // namespace

QString programTitle() {
    return QStringLiteral("Wendmark");
}

void showMessage(QWidget* parent, const QString& text, const QString& title, QMessageBox::Icon icon) {
    QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    runMessage(box);
}

bool askYesNo(QWidget* parent, const QString& text, const QString& title, QMessageBox::Icon icon) {
    QMessageBox box(icon, title, text, QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return runMessage(box) == QMessageBox::Yes;
}

int runMessage(QMessageBox& box) {
    // The box takes its size from its layout, whatever size it is given.
    auto* const layout = qobject_cast<QGridLayout*>(box.layout());
    const QMargins margins = layout->contentsMargins();
    const QSize besideLayout(margins.left() + margins.right(), 0);
    const QSize largest = largestSizeOf(box);
    const int widest = widestBox(largest.width()) - besideLayout.width();
    const QString text = box.text();
    const int width = std::min(std::max(fitText(box, largest - besideLayout), widthForTitle(box)), widest);
    if (box.text() != text)
        box.setToolTip(text.left(longestToolTip));
    layout->addItem(new QSpacerItem(width, 0), layout->rowCount(), 0, 1, layout->columnCount());
    return box.exec();
}

SaveAnswer askToSave(QWidget* parent, const QString& text, const QString& save, const QString& goOn) {
    QMessageBox box(QMessageBox::Question, programTitle(), text, QMessageBox::NoButton, parent);
    box.setTextFormat(Qt::PlainText);
    const QAbstractButton* const saves = box.addButton(save, QMessageBox::AcceptRole);
    const QAbstractButton* const goesOn =
        goOn.isEmpty() ? nullptr : box.addButton(goOn, QMessageBox::AcceptRole);
    box.setEscapeButton(box.addButton(QMessageBox::Cancel));
    box.setDefaultButton(qobject_cast<QPushButton*>(box.buttons().constFirst()));
    runMessage(box);
    const QAbstractButton* const clicked = box.clickedButton();
    if (clicked == saves)
        return SaveAnswer::save;
    return clicked != nullptr && clicked == goesOn ? SaveAnswer::goOn : SaveAnswer::cancel;
}

} // namespace wendmark
