#pragma once

#include <QString>
#include <QStringList>
#include <memory>

class QPrinter;

/// Printing without asking: on the default printer or, where none is installed, into a PDF file.
namespace wendmark {

/// The default printer; without one, a printer that writes a new PDF file named after the document into the
/// author's documents folder. outputFileName() tells which; it is empty for a real printer.
std::unique_ptr<QPrinter> makeDefaultPrinter(const QString& documentName);

/// Prints lines of text in 10 points, wrapped and on as many pages as they need. False when the printer
/// fails.
bool printLines(QPrinter& printer, const QStringList& lines);

} // namespace wendmark
