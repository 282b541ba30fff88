#include "ui/support/SiteEditor.h"

#include "platform/BrowserView.h"
#include "platform/Strings.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

namespace wendmark::test {

SiteEditor::SiteEditor() : window(program.parts()) {
    window.load(program.makeTour("walk", 3));
    window.show();
    program.clockStep = 0;
    program.document.goToStop(2);
    edit();
}

void SiteEditor::edit() {
    window.runToolBarCommand("EdBro");
    // A page that is there is in the history or told of; before that it may still end what comes next.
    const auto isSettled = [&] {
        return address().itemText(0) == browser().locationURL() || !notice().isEmpty();
    };
    if (!waitUntil([&] {
            return isOpen() && !browser().isBusy() && !browser().locationName().isEmpty() && isSettled();
        }))
        QFAIL("the stop's page is not shown");
}

/// One that was closed may not be deleted yet.
frmBrowser* SiteEditor::findEditor() const {
    for (frmBrowser* editor : window.findChildren<frmBrowser*>("frmBrowser")) {
        if (!editor->isHidden())
            return editor;
    }
    return nullptr;
}

QString SiteEditor::notice() const {
    return control<QLabel>("lblNotice").text();
}

void SiteEditor::click(const char* button) const {
    if (auto* const tool = editor().findChild<QToolButton*>(QLatin1String(button)); tool != nullptr)
        QTest::mouseClick(tool, Qt::LeftButton);
    else
        QTest::mouseClick(&control<QPushButton>(button), Qt::LeftButton);
}

void SiteEditor::visit(const QString& typed) const {
    QLineEdit& field = *address().lineEdit();
    field.setText(typed);
    QTest::keyClick(&field, Qt::Key_Return);
    if (!shows(typed))
        QFAIL(qPrintable("not shown: " + typed));
}

bool SiteEditor::shows(const QString& address) const {
    // The browser has a new location before it has its page; a page that is there is in the history.
    const bool shown = waitUntil([&] {
        return isOpen() && !browser().isBusy() && browser().locationURL().endsWith(address) &&
               history().value(0).endsWith(address);
    });
    if (!shown && isOpen())
        qWarning() << "wanted" << address << "shown" << browser().locationURL() << "busy"
                   << browser().isBusy() << "newest visit" << history().value(0);
    return shown;
}

QString SiteEditor::local(const QString& name) const {
    return QUrl::fromLocalFile(program.working(name)).toString(QUrl::FullyEncoded);
}

QStringList SiteEditor::history() const {
    QStringList addresses;
    for (int i = 0; i < address().count(); ++i)
        addresses.append(address().itemText(i));
    return addresses;
}

QStringList SiteEditor::linesOf(const QString& workingFile) const {
    const std::string bytes = readFile(toUtf8(program.working(workingFile)));
    QStringList lines = toQString(bytes).split("\r\n");
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

void SiteEditor::write(const QString& workingFile, const QByteArray& bytes) const {
    writeFile(toUtf8(program.working(workingFile)), bytes.toStdString());
}

void onMessageWindow(const QString& caption, const QString& text) {
    onNextDialog([=](QDialog& dialog) {
        QCOMPARE(dialog.objectName(), QString("frmMessage"));
        QCOMPARE(dialog.windowTitle(), caption);
        QCOMPARE(dialog.findChild<QLabel*>("Label1")->text(), text);
        press(dialog, "OKButton");
    });
}

} // namespace wendmark::test
