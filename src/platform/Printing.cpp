#include "platform/Printing.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextDocument>

namespace wendmark {

namespace {

constexpr int longestName = 100; // Characters; every file system takes that many, in any alphabet.
constexpr qreal textSize = 10;   // Points.

/// A name that file systems take.
QString fileNameFor(const QString& documentName) {
    static const QRegularExpression unfit(QStringLiteral("[\\x00-\\x1f\\x7f/\\\\:*?\"<>|]+"));
    QString name = documentName;
    name.replace(unfit, QStringLiteral(" "));
    name = name.simplified().left(longestName);
    while (name.startsWith(QLatin1Char('.')))
        name.remove(0, 1);
    return name.isEmpty() ? QStringLiteral("Tour") : name;
}

/// The author's own files are never replaced.
QString newFile(const QString& folder, const QString& name) {
    QDir().mkpath(folder);
    QString path = folder + QLatin1Char('/') + name + QStringLiteral(".pdf");
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = QStringLiteral("%1/%2 (%3).pdf").arg(folder, name).arg(number);
    return path;
}

} // namespace

std::unique_ptr<QPrinter> makeDefaultPrinter(const QString& documentName) {
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    auto printer = standard.isNull() ? std::make_unique<QPrinter>(QPrinter::HighResolution)
                                     : std::make_unique<QPrinter>(standard, QPrinter::HighResolution);
    printer->setDocName(documentName);
    if (standard.isNull()) {
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(newFile(documents, fileNameFor(documentName)));
    }
    return printer;
}

bool printLines(QPrinter& printer, const QStringList& lines) {
    QTextDocument document;
    QFont font = document.defaultFont();
    font.setPointSizeF(textSize);
    document.setDefaultFont(font);
    document.setPlainText(lines.join(QLatin1Char('\n')));
    document.print(&printer);
    return printer.printerState() != QPrinter::Error &&
           (printer.outputFileName().isEmpty() || QFileInfo::exists(printer.outputFileName()));
}

} // namespace wendmark
