#include "ui/WindowPlace.h"

#include "platform/BrowserView.h"
#include "platform/Settings.h"
#include "platform/Twips.h"
#include "ui/Messages.h"
#include "ui/controls/WrappedLabel.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/main/frmMain.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/site/SitePanes.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

namespace wendmark {

using test::onNextDialog;
using test::patience;
using test::SiteEditor;
using test::UiFixture;

namespace {

constexpr QRect screen(100, 50, 1366, 768);

/// A main window with the tour, shown.
void show(frmMain& window, UiFixture& program) {
    window.load(program.makeTour(QStringLiteral("walk"), 2));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
}

frmNarEdit& editNarration(frmMain& window, UiFixture& program) {
    program.document.goToStop(1);
    window.editNarrationFrame();
    return *window.findChild<frmNarEdit*>();
}

/// A dialog of many lines above one button.
void fillHigh(QDialog& dialog, int lines) {
    QVBoxLayout* const layout = makeDialogLayout(dialog);
    for (int line = 0; line < lines; ++line)
        layout->addWidget(new QPushButton(QString::number(line), &dialog));
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(makeButton("OKButton", QStringLiteral("OK"), &dialog));
    layout->addLayout(buttons);
}

/// Hears what the notices say that are shown while the program has no other window.
class NoticeWatch final : public QObject {
public:
    NoticeWatch() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->objectName() == QLatin1String("lblMaking"))
            m_said.append(qobject_cast<QLabel*>(watched)->text());
        return false;
    }

    const QStringList& said() const { return m_said; }

private:
    QStringList m_said;
};

/// How many windows of the program are on screen.
qsizetype shownWindows() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::count_if(windows.begin(), windows.end(),
                         [](const QWidget* window) { return window->isVisible(); });
}

} // namespace

class WindowPlaceTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { QCOMPARE(test::dialogsExpected(), 0); }

    void windowThatFitsStaysWhereItIs() {
        QCOMPARE(rectInside({150, 90, 400, 300}, screen), QRect(150, 90, 400, 300));
        QCOMPARE(rectInside(screen, screen), screen);
    }

    void windowThatReachesOutIsMovedByAsMuchAsNeeded() {
        QCOMPARE(rectInside({1200, 700, 400, 300}, screen), QRect(1066, 518, 400, 300));
        QCOMPARE(rectInside({-40, 10, 400, 300}, screen), QRect(100, 50, 400, 300));
    }

    void windowLargerThanTheScreenFillsIt() {
        QCOMPARE(rectInside({-300, 0, 2391, 300}, screen), QRect(100, 50, 1366, 300));
        QCOMPARE(rectInside({0, 0, 9999, 9999}, screen), screen);
    }

    void storedSizeOfALargerScreenIsClamped() {
        UiFixture program;
        program.settings.store(mainSettings::width, 60000);
        program.settings.store(mainSettings::height, 45000);
        frmMain window(program.parts());
        show(window, program);
        const QRect available = window.screen()->availableGeometry();
        QTRY_VERIFY_WITH_TIMEOUT(available.contains(window.frameGeometry()), patience);
        QVERIFY(window.width() > available.width() - 40); // Its frame is no wider.
    }

    void maximisedMainWindowIsRememberedWithTheSizeThatItHasOtherwise() {
        UiFixture program;
        program.settings.store(mainSettings::width, 9000);
        {
            frmMain window(program.parts());
            show(window, program);
            QVERIFY(!window.isMaximized());
            window.showMaximized();
            QTRY_VERIFY_WITH_TIMEOUT(window.width() > 600, patience);
            QVERIFY(window.close());
        }
        QVERIFY(program.settings.read(mainSettings::maximised));
        QCOMPARE(program.settings.read(mainSettings::width), 9000.0F);
    }

    void mainWindowOpensMaximisedAgain() {
        UiFixture program;
        program.settings.store(mainSettings::maximised, true);
        frmMain window(program.parts());
        show(window, program);
        QVERIFY(window.isMaximized());
        window.showNormal();
        QTRY_COMPARE_WITH_TIMEOUT(window.width(), pixelsFromTwips(6500), patience);
    }

    void sizeOfTheNarrationEditorIsRemembered() {
        UiFixture program;
        frmMain window(program.parts());
        show(window, program);
        frmNarEdit& editor = editNarration(window, program);
        QCOMPARE(editor.width(), 720);
        editor.resize(640, 700);
        editor.close();
        QTRY_VERIFY_WITH_TIMEOUT(window.findChild<frmNarEdit*>() == nullptr, patience);
        QCOMPARE(editNarration(window, program).size(), QSize(640, 700));
    }

    void editorsStayAboveTheMainWindowWithoutBeingModal() {
        SiteEditor open;
        open.edit();
        frmNarEdit& narration = editNarration(open.window, open.program);
        for (const QWidget* const editor :
             {static_cast<QWidget*>(&open.editor()), static_cast<QWidget*>(&narration)}) {
            QCOMPARE(editor->windowHandle()->transientParent(), open.window.windowHandle());
            QCOMPARE(editor->windowHandle()->type(), Qt::Dialog); // Of others X11 is not told whose they are.
            QVERIFY(!editor->isModal());
            QVERIFY(editor->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
        }
    }

    void siteEditorStandsBesideTheMainWindowAndInsideTheScreen() {
        SiteEditor open;
        open.edit();
        QCOMPARE(open.editor().size(), open.window.size());
        const int beside = pixelsFromTwips(400);
        QCOMPARE(open.editor().pos(), open.window.pos() + QPoint(beside, beside));
        open.editor().close();
        open.window.setGeometry(open.window.screen()->availableGeometry().adjusted(4, 4, -4, -4));
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(
            open.editor().screen()->availableGeometry().contains(open.editor().frameGeometry()), patience);
    }

    void pageComesFirstInTheSiteEditor() {
        SiteEditor open;
        open.edit();
        QTRY_VERIFY_WITH_TIMEOUT(open.browser().height() > 160, patience);
        QVERIFY(open.browser().height() * 2 >= open.control<SitePanes>("splitter").height());
    }

    void draggedBorderOfTheSiteEditorIsRemembered() {
        SiteEditor open;
        open.edit();
        auto& panes = open.control<SitePanes>("splitter");
        QTRY_VERIFY_WITH_TIMEOUT(panes.sizes().value(1) > 0, patience);
        const QWidget* const border = panes.handle(1);
        const QPoint start = border->rect().center();
        QTest::mousePress(panes.handle(1), Qt::LeftButton, {}, start);
        QTest::mouseMove(panes.handle(1), start + QPoint(0, 30));
        QTest::mouseRelease(panes.handle(1), Qt::LeftButton, {}, start + QPoint(0, 30));
        const int height = panes.sizes().value(1);
        QCOMPARE(open.program.settings.read(siteSettings::bookmarksHeight), 0.0F);
        open.editor().close();
        QCOMPARE(open.program.settings.read(siteSettings::bookmarksHeight), twipsFromPixels(height));
        open.edit();
        QTRY_COMPARE_WITH_TIMEOUT(open.control<SitePanes>("splitter").sizes().value(1), height, patience);
    }

    void maximisedSiteEditorIsRemembered() {
        SiteEditor open;
        open.edit();
        open.editor().showMaximized();
        open.editor().close();
        open.edit();
        QVERIFY(open.editor().isMaximized());
    }

    void dialogThatIsTooHighScrollsAboveItsButtons() {
        const UiFixture program; // Sees to dialogs that a failure leaves open.
        QDialog dialog;
        fillHigh(dialog, 60);
        onNextDialog([](QDialog& shown) {
            QVERIFY(shown.screen()->availableGeometry().contains(shown.frameGeometry()));
            const auto* const area = shown.findChild<QScrollArea*>();
            QVERIFY(area != nullptr && area->verticalScrollBar()->maximum() > 0);
            QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
            const auto* const button = shown.findChild<QPushButton*>(QStringLiteral("OKButton"));
            QVERIFY(!area->isAncestorOf(button) && shown.rect().contains(button->geometry()));
            shown.reject();
        });
        runDialog(dialog);
    }

    void dialogThatFitsHasNoScrollBars() {
        const UiFixture program;
        QDialog dialog;
        fillHigh(dialog, 3);
        onNextDialog([](QDialog& shown) {
            QVERIFY(shown.findChild<QScrollArea*>() == nullptr);
            shown.reject();
        });
        runDialog(dialog);
    }

    void longAddressWrapsInAMessageAndIsThereAsAToolTip() {
        const UiFixture program;
        const QString address =
            QStringLiteral("https://www.brenholt.example/") + QString(317, QLatin1Char('a'));
        onNextDialog([address](QDialog& box) {
            QVERIFY(box.width() <= 560);
            QCOMPARE(box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))->text().remove(QChar(0x200B)),
                     address);
            QCOMPARE(box.toolTip(), address);
            box.reject();
        });
        showMessage(nullptr, address);
    }

    void messageIsAsWideAsItsTitle() {
        const UiFixture program;
        const QString title = QStringLiteral("Wendmark: The Tour Name That Is in Use");
        onNextDialog([title](QDialog& box) {
            QVERIFY(box.width() >= box.fontMetrics().horizontalAdvance(title) + 100);
            box.reject();
        });
        showMessage(nullptr, QStringLiteral("No."), title);
    }

    void tourThatTakesLongIsToldWhileThereIsNoWindow() {
        UiFixture program;
        qint64 now = 0;
        program.stepClock = [&now] { return now += 1000; }; // Each step is a long one.
        const NoticeWatch watch;
        frmMain window(program.parts());
        window.load(program.makeTour(QStringLiteral("rivers"), 3));
        QVERIFY(watch.said().contains(QStringLiteral("Making the pages of rivers...")));
        QTRY_COMPARE_WITH_TIMEOUT(shownWindows(), qsizetype{0}, patience);
    }

    void noticeLeavesForAQuestion() {
        UiFixture program;
        qint64 now = 0;
        program.stepClock = [&now] { return now += 1000; };
        const NoticeWatch watch;
        frmMain window(program.parts());
        onNextDialog([](QDialog& wizard) {
            QTRY_COMPARE_WITH_TIMEOUT(shownWindows(), qsizetype{1}, patience);
            wizard.close();
        });
        window.load();
        QVERIFY(!watch.said().isEmpty());
    }

    void tourThatIsMadeAtOnceIsNotTold() {
        UiFixture program;
        program.stepClock = [] { return 0; };
        const NoticeWatch watch;
        frmMain window(program.parts());
        window.load(program.makeTour(QStringLiteral("rivers"), 3));
        QCOMPARE(watch.said(), QStringList());
    }

    void launchingInformationShowsItsListAtOnce() {
        UiFixture program;
        program.model.launchURLCount = 1;
        program.model.launchURL = {"http://www.brenholt.example/start.htm"};
        frmLaunch dialog(program.document, program.desktop);
        onNextDialog([](QDialog& shown) {
            const auto* const text = shown.findChild<QPlainTextEdit*>(QStringLiteral("Text1"));
            QVERIFY(text->toPlainText().contains(QStringLiteral("start.htm")));
            QCOMPARE(text->verticalScrollBar()->maximum(), 0);
            shown.reject();
        });
        runDialog(dialog);
    }

    void labelBreaksWordsThatAreLongerThanALine() {
        const WrappedLabel label(QString(346, QLatin1Char('w')));
        const WrappedLabel usual(QStringLiteral("Words of the usual length need no such thing."));
        QVERIFY(label.minimumSizeHint().width() < 500);
        QVERIFY(label.sizeHint().width() < 1000);
        const int line = label.fontMetrics().lineSpacing();
        QVERIFY(label.heightForWidth(300) >=
                346 * label.fontMetrics().horizontalAdvance(QLatin1Char('w')) / 300 * line);
        QCOMPARE(usual.heightForWidth(1000), QLabel(usual.text()).sizeHint().height());
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::WindowPlaceTest)

#include "WindowPlaceTest.moc"
