#include "commands/TourDocument.h"
#include "platform/BrowserView.h"
#include "ui/controls/CommandButton.h"
#include "ui/controls/LoadingIndicator.h"
#include "ui/main/frmMain.h"
#include "ui/site/frmBrowser.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QTcpServer>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <cstdlib>
#include <string>

namespace wendmark {

using test::engineOf;
using test::patience;
using test::UiFixture;

namespace {

/// The program with a tour of three stops on screen. The page of the third is on a server that never answers.
struct OpenTour {
    OpenTour() : window(program.parts()) {
        silent.listen(QHostAddress::LocalHost);
        window.load(program.makeTour(QStringLiteral("walk"), 3));
        window.resize(700, 600);
        window.show();
        QTRY_VERIFY_WITH_TIMEOUT(!browser().isBusy() && !veil().isVisible(), patience);
        program.document.goToStop(3);
        program.document.setAddress(3, "http://127.0.0.1:" + std::to_string(silent.serverPort()) + "/");
        program.document.goToStop(1);
        waitForStop(1);
        QTRY_VERIFY_WITH_TIMEOUT(!browser().isBusy() && !veil().isVisible(), patience);
    }

    QWidget& control(const char* name) const { return *window.findChild<QWidget*>(QLatin1String(name)); }
    QWidget& veil() const { return control("previewVeil"); }
    BrowserView& browser() const { return *window.findChild<BrowserView*>(QStringLiteral("broMain")); }
    QString number() const { return window.findChild<QLabel*>(QStringLiteral("lblStopNum"))->text(); }
    QString nameOfNumber() const { return control("lblStopNum").accessibleName(); }
    QString indicator() const { return control("picBusy").accessibleName(); }
    void waitForStop(int n) const { QTRY_COMPARE_WITH_TIMEOUT(number(), QString::number(n), patience); }

    /// Goes to a stop as a link in its words would: only frames are loaded.
    void stepInside(int n) const {
        engineOf(browser()).page()->runJavaScript(
            QStringLiteral("frames.nar.location.href = 'page%1.htm'").arg(n));
    }

    /// Name of the file that the frame of the stop's page shows.
    QString shownInSiteFrame() const {
        QString name;
        bool answered = false;
        engineOf(browser()).page()->runJavaScript(
            QStringLiteral("frames.mw.location.pathname.split('/').pop()"), [&](const QVariant& answer) {
                name = answer.toString();
                answered = true;
            });
        return test::waitUntil([&] { return answered; }) ? name : QString();
    }

    QTcpServer silent;
    UiFixture program;
    frmMain window;
};

/// What a tool tip of the control says on screen.
QString shownToolTip(QWidget& control) {
    const QPoint centre = control.rect().center();
    QHelpEvent event(QEvent::ToolTip, centre, control.mapToGlobal(centre));
    QCoreApplication::sendEvent(&control, &event);
    const QString text = QToolTip::text();
    QToolTip::hideText();
    return text;
}

bool areAlike(QRgb one, QRgb other) {
    constexpr int most = 6; // Of 255.
    return std::abs(qRed(one) - qRed(other)) <= most && std::abs(qGreen(one) - qGreen(other)) <= most &&
           std::abs(qBlue(one) - qBlue(other)) <= most;
}

/// Places at which two pictures of the same size are not alike.
int differences(const QImage& one, const QImage& other) {
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += areAlike(one.pixel(x, y), other.pixel(x, y)) ? 0 : 1;
    }
    return count;
}

QImage veiled(const QImage& picture, QColor veil) {
    QImage result = picture.convertToFormat(QImage::Format_RGB32);
    veil.setAlphaF(0.35F);
    QPainter(&result).fillRect(result.rect(), veil);
    return result;
}

} // namespace

class ToolBarTest final : public QObject {
    Q_OBJECT

private slots:
    void toolTipsNameTheKeys() {
        UiFixture program;
        const frmMain window(program.parts());
        const auto tip = [&window](const char* key) {
            return shownToolTip(*window.findChild<QToolButton*>(QLatin1String(key)));
        };
        QCOMPARE(tip("Save"), QString("Save Tour (Ctrl+S)"));
        QCOMPARE(tip("Next"), QString("Go to Next Stop (Ctrl+PgDown)"));
        for (const auto* const button : window.findChildren<CommandButton*>())
            QVERIFY2(tip(qPrintable(button->objectName())).endsWith(QLatin1Char(')')),
                     qPrintable(button->objectName()));
    }

    void toolTipOfACommandWithoutKeysIsItsTextAlone() {
        QAction action;
        CommandButton button(QStringLiteral("New Tour"), action, nullptr);
        QCOMPARE(shownToolTip(button), QString("New Tour"));
    }

    void iconsGrowWithTheText() {
        UiFixture program;
        frmMain window(program.parts());
        auto& button = *window.findChild<CommandButton*>(QStringLiteral("Save"));
        auto& indicator = *window.findChild<LoadingIndicator*>(QStringLiteral("picBusy"));
        QCOMPARE(button.iconSize(), QSize(24, 24));
        QCOMPARE(indicator.size(), QSize(24, 24));
        QFont large = button.font();
        large.setPointSize(24);
        button.setFont(large);
        indicator.setFont(large);
        QVERIFY(button.iconSize().width() >= QFontMetrics(large).height());
        QCOMPARE(indicator.size(), button.iconSize());
    }

    void siteEditorSaysInWordsWhatItIsFor() {
        OpenTour open;
        open.window.editSiteFrame();
        auto& editor = *open.window.findChild<frmBrowser*>();
        const auto& use = *editor.findChild<QToolButton*>(QStringLiteral("Yes"));
        QCOMPARE(use.text(), QString("Use this Site"));
        QCOMPARE(use.toolButtonStyle(), Qt::ToolButtonTextBesideIcon);
        editor.closeNow();
    }

    void stopNumberSaysOfHowMany() {
        OpenTour open;
        QCOMPARE(open.nameOfNumber(), QString("Stop 1 of 3"));
        open.program.document.insertStop();
        open.waitForStop(2);
        QTRY_COMPARE_WITH_TIMEOUT(open.nameOfNumber(), QString("Stop 2 of 4"), patience);
        open.program.document.goToStop(0);
        QTRY_COMPARE_WITH_TIMEOUT(open.nameOfNumber(), QString("Opening page"), patience);
        QCOMPARE(open.number(), QString());
    }

    void stopNumberKeepsItsWidth() {
        OpenTour open;
        const int width = open.control("picStopNum").width();
        open.program.document.goToStop(0);
        QTRY_COMPARE_WITH_TIMEOUT(open.nameOfNumber(), QString("Opening page"), patience);
        QCOMPARE(open.control("picStopNum").width(), width);
    }

    void loadingIndicatorSaysWhetherAPageIsLoading() {
        LoadingIndicator indicator;
        QCOMPARE(indicator.accessibleName(), QString("Not loading"));
        indicator.tick(true);
        QCOMPARE(indicator.accessibleName(), QString("Loading"));
        const QImage busy = indicator.grab().toImage();
        indicator.tick(false);
        QCOMPARE(indicator.accessibleName(), QString("Not loading"));
        QVERIFY(busy != indicator.grab().toImage());
    }

    void statusIsReadWithItsName() {
        OpenTour open;
        QTRY_COMPARE_WITH_TIMEOUT(open.control("Status").accessibleName(),
                                  QString("Status: >*>*>vosktourstop->1"), patience);
    }

    void lastPictureStaysUnderAVeilUntilTheNextPageIsPainted() {
        OpenTour open;
        const QImage before = open.browser().grab().toImage();
        QVERIFY(differences(before, veiled(before, before.pixelColor(0, 0))) > 0); // It shows something.
        open.window.next();
        QVERIFY(open.veil().isVisible());
        QCOMPARE(open.veil().geometry(), open.browser().geometry());
        const QImage during = open.veil().grab().toImage();
        const QColor veil = open.veil().palette().color(QPalette::Window);
        QCOMPARE(during.size(), before.size());
        QCOMPARE(differences(during, veiled(before, veil)), 0);
        QCOMPARE(open.nameOfNumber(), QString("Stop 1 of 3, the next page is loading"));
        QTRY_VERIFY_WITH_TIMEOUT(!open.veil().isVisible(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(open.nameOfNumber(), QString("Stop 2 of 3"), patience);
    }

    void wordsOfAStopDoNotWaitForItsSite() {
        OpenTour open;
        open.program.document.goToStop(3);
        QVERIFY(open.veil().isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!open.veil().isVisible(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(open.nameOfNumber(), QString("Stop 3 of 3"), patience);
        // The page of the waiting gives way to one that never comes.
        QTRY_COMPARE_WITH_TIMEOUT(open.indicator(), QString("Loading"), patience);
        open.window.stopLoading();
    }

    void pageThatComesByItselfIntoTheSiteFrameIsLoading() {
        OpenTour open;
        open.stepInside(3);
        open.waitForStop(3);
        QTRY_COMPARE_WITH_TIMEOUT(open.indicator(), QString("Loading"), patience);
        QVERIFY(!open.browser().isBusy()); // Of frames alone the engine says nothing.
        QCOMPARE(open.control("Status").accessibleName(), QString("Status: >*>*>vosktourstop->3"));
        open.window.stopLoading();
        QTRY_COMPARE_WITH_TIMEOUT(open.indicator(), QString("Not loading"), patience);
        open.stepInside(2);
        open.waitForStop(2);
        QTRY_COMPARE_WITH_TIMEOUT(open.shownInSiteFrame(), QString("newpage.htm"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(open.indicator(), QString("Not loading"), patience);
    }

    void mouseReachesThePageBelowTheVeil() {
        OpenTour open;
        open.window.next();
        QVERIFY(open.veil().isVisible());
        QWidget* const hit =
            open.window.childAt(open.browser().mapTo(&open.window, open.browser().rect().center()));
        QVERIFY(hit != nullptr && hit != &open.veil());
        QTRY_VERIFY_WITH_TIMEOUT(!open.veil().isVisible(), patience);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::ToolBarTest)

#include "ToolBarTest.moc"
