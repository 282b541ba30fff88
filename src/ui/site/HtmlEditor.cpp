#include "ui/site/HtmlEditor.h"

#include "base/Log.h"
#include "model/Options.h"
#include "model/StopAddress.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmMessage.h"

#include <QCoreApplication>
#include <QStringList>
#include <QUrl>

namespace wendmark {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("HtmlEditor", text);
}

void show(const QString& title, const QStringList& lines, QWidget* parent) {
    frmMessage message(title, lines.join(QStringLiteral("\r\n")), parent);
    runDialog(message);
}

void sayThatNoneIsChosen(QWidget* parent) {
    show(QStringLiteral("Wendmark - HTML Editor not specified"),
         {tr("To use this feature you have to specify your favorite HTML editor:"),
          tr("  Go to the Wendmark main window."), tr("  Select Options from the View menu."),
          tr("  Specify the path to the editor's EXE file.")},
         parent);
}

QStringList explanation(bool newPage) {
    if (newPage)
        return {
            tr("After creating your HTML document, save the file in any location you choose."), QString(),
            tr("Upon returning to the \"URL Editor\" window, use the \"Select Local File\" button to load "
               "the newly created file")};
    return {tr("After editing the current HTML document, save the file in its current location (by using the "
               "editor's \"Save\" button)."),
            QString(),
            tr("Upon returning to the \"URL Editor\" window, use the \"Refresh\" button to update the "
               "display.")};
}

} // namespace

bool HtmlEditor::launch(const std::string& location, QWidget* parent) {
    const QString editor = toQString(m_options.htmlEditorPath);
    if (editor.isEmpty() || editor.compare(QLatin1String("NONE"), Qt::CaseInsensitive) == 0) {
        sayThatNoneIsChosen(parent);
        return true;
    }
    const std::string file = editableFile(location);
    show(QStringLiteral("Wendmark - HTML Editor"), explanation(file.empty()), parent);
    const bool there = m_editorTaskId != 0 && activateTask(m_editorTaskId);
    return there || start(toQString(file));
}

/// `file` is percent-encoded and lacks the separator that begins a path.
bool HtmlEditor::start(const QString& file) {
    QString path = QUrl::fromPercentEncoding(toQString(AddSpaces(toUtf8(file))).toUtf8());
#ifndef _WIN32
    if (!path.isEmpty())
        path.prepend(QLatin1Char('/'));
#endif
    m_editorTaskId = startTask(toQString(m_options.htmlEditorPath), {path});
    if (m_editorTaskId == 0)
        m_log.fail("cannot start the HTML editor " + m_options.htmlEditorPath);
    return m_editorTaskId != 0;
}

} // namespace wendmark
