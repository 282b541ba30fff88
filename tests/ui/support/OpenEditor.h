#pragma once

#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/MainDialogs.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/DialogWatch.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextCursor>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <string>

namespace wendmark::test {

/// The program with a tour of three stops, whose instructions are the author's own unless a test says
/// otherwise, and the narration editor on stop 2.
class OpenEditor {
public:
    explicit OpenEditor(bool autoInstruction = false) : window(program.parts()) {
        window.load(program.makeTour("walk", 3));
        window.show();
        program.model.autoInstruction = autoInstruction;
        program.document.goToStop(2);
        program.model.stops.at(2).stopInstruction = "Look at stop 2.";
        edit();
    }

    void edit() { window.runToolBarCommand("EdNar"); }

    frmNarEdit& editor() const { return *window.findChild<frmNarEdit*>("frmNarEdit"); }
    QLineEdit& title() const { return *editor().findChild<QLineEdit*>("txtStopTitle"); }
    HtmlField& text() const { return *editor().findChild<HtmlField*>("txtText"); }
    HtmlField& instruction() const { return *editor().findChild<HtmlField*>("txtMoreText"); }
    QPushButton& button(const char* name) const { return *editor().findChild<QPushButton*>(name); }
    void click(const char* name) const { QTest::mouseClick(&button(name), Qt::LeftButton); }

    void select(int start, int length) const {
        QTextCursor cursor = text().textCursor();
        cursor.setPosition(start);
        cursor.setPosition(start + length, QTextCursor::KeepAnchor);
        text().setTextCursor(cursor);
    }

    void fill(const QString& narration, int start, int length) const {
        text().setPlainText(narration);
        select(start, length);
    }

    /// In the tour's properties.
    void setAutomatic(bool automatic) {
        onNextDialog([automatic](QDialog& dialog) {
            dialog.findChild<QCheckBox*>("chkAddInstructions")->setChecked(automatic);
            press(dialog, "OKButton");
        });
        window.dialogs().editTourProperties();
        QCOMPARE(dialogsExpected(), 0);
        QCOMPARE(program.model.autoInstruction, automatic);
    }

    std::string page(int n) const {
        return test::readFile(toUtf8(program.working("page" + QString::number(n) + ".htm")));
    }

    BrowserView& preview() const { return *editor().findChild<BrowserView*>("broPreview"); }

    UiFixture program;
    frmMain window;
};

/// What readers see of the page in this view.
inline QString shownText(BrowserView& view) {
    QString text;
    bool there = false;
    test::engineOf(view).page()->toPlainText([&](const QString& plain) {
        text = plain;
        there = true;
    });
    return QTest::qWaitFor([&] { return there; }, patience) ? text : QString();
}

} // namespace wendmark::test
