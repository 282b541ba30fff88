#include "ui/printing/PrintedText.h"

#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <memory>
#include <utility>

namespace wendmark {

namespace {

constexpr int textSize = 13; // Units; ten points.
constexpr QChar ellipsis(0x2026);

/// A text of a given width that finds the pictures of the tour and nothing else.
class PrintedText final : public QTextDocument {
public:
    PrintedText(const QSizeF& box, QString pictureFolder, bool bold)
        : m_box(box), m_pictureFolder(std::move(pictureFolder)) {
        QFont font(QStringLiteral("Sans Serif"));
        font.setPixelSize(textSize);
        font.setBold(bold);
        setDefaultFont(font);
        setDocumentMargin(0);
        setTextWidth(box.width());
    }

    bool fits() const { return size().height() <= m_box.height(); }

    /// Puts an ellipsis in place of everything from this character on.
    void cutAt(int position) {
        QTextCursor cursor(this);
        cursor.setPosition(position);
        cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
        cursor.insertText(ellipsis);
    }

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        const QFileInfo file(m_pictureFolder + QLatin1Char('/') +
                             QUrl::fromPercentEncoding(name.path().toUtf8()));
        const bool inFolder = !m_pictureFolder.isEmpty() && type == ImageResource && name.isRelative() &&
                              !file.isSymLink() &&
                              file.canonicalPath() == QFileInfo(m_pictureFolder).canonicalFilePath();
        QImage picture(inFolder ? file.filePath() : QString());
        if (picture.isNull())
            return QImage(1, 1, QImage::Format_ARGB32_Premultiplied);
        const QSize largest = QSizeF(m_box.width(), m_box.height() / 2).toSize();
        return picture.width() > largest.width() || picture.height() > largest.height()
                   ? picture.scaled(largest, Qt::KeepAspectRatio, Qt::SmoothTransformation)
                   : picture;
    }

private:
    QSizeF m_box;
    QString m_pictureFolder;
};

using Text = std::unique_ptr<PrintedText>;

template <typename Make>
int longestFit(const Make& make, int length) {
    int fitting = 0;
    int tooLong = length;
    while (tooLong - fitting > 1) {
        const int middle = (fitting + tooLong) / 2;
        const Text text = make();
        text->cutAt(middle);
        (text->fits() ? fitting : tooLong) = middle;
    }
    return fitting;
}

/// The text, shortened to its box.
template <typename Make>
Text fitted(const Make& make, bool isAll) {
    Text text = make();
    if (text->fits()) {
        if (!isAll)
            text->cutAt(text->characterCount() - 1);
        return text;
    }
    const int end = longestFit(make, text->characterCount() - 1);
    QTextCursor cursor(text.get());
    cursor.setPosition(end);
    cursor.movePosition(QTextCursor::StartOfWord);
    text->cutAt(cursor.position() > 0 ? cursor.position() : end);
    return text;
}

double draw(QPainter& painter, const QPointF& place, const QSizeF& box, const PrintedText& text) {
    painter.save();
    painter.translate(place);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(QPointF(), box);
    text.documentLayout()->draw(&painter, context);
    painter.restore();
    return text.size().height();
}

} // namespace

double drawHtml(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& html,
                const QString& pictureFolder) {
    const auto make = [&, beginning = html.left(mostLaidOut)] {
        auto text = std::make_unique<PrintedText>(box, pictureFolder, false);
        text->setHtml(beginning);
        return text;
    };
    return draw(painter, place, box, *fitted(make, html.size() <= mostLaidOut));
}

double drawPlainText(QPainter& painter, const QPointF& place, const QSizeF& box, const QString& text,
                     bool bold) {
    const auto make = [&, beginning = text.left(mostLaidOut)] {
        auto printed = std::make_unique<PrintedText>(box, QString(), bold);
        printed->setPlainText(beginning);
        return printed;
    };
    return draw(painter, place, box, *fitted(make, text.size() <= mostLaidOut));
}

} // namespace wendmark
