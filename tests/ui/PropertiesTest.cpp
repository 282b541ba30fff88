#include "platform/Settings.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/LayoutDiagram.h"
#include "ui/dialogs/frmLaunch.h"
#include "ui/dialogs/frmOptions.h"
#include "ui/dialogs/frmPropTab.h"
#include "ui/main/MainDialogs.h"
#include "ui/main/frmMain.h"
#include "ui/support/OwnHome.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QWindow>

namespace wendmark {

using test::hasKeys;
using test::onNextDialog;
using test::patience;
using test::press;
using test::textOf;
using test::UiFixture;

namespace {

QLineEdit& field(QDialog& dialog, const char* name) {
    return *dialog.findChild<QLineEdit*>(QLatin1String(name));
}

QCheckBox& box(QDialog& dialog, const char* name) {
    return *dialog.findChild<QCheckBox*>(QLatin1String(name));
}

QListWidget& list(QDialog& dialog) {
    return *dialog.findChild<QListWidget*>("lstLaunchURLList");
}

QString caption(const QWidget* widget) {
    return widget->property("text").toString().remove(QLatin1Char('&'));
}

void expectMessage(const QString& text) {
    onNextDialog([=](QDialog& message) {
        QCOMPARE(textOf(message), QStringLiteral("Wendmark|") + text);
        press(message, "OK");
    });
}

/// Answers the next file dialog with a file, or cancels it without one.
void onFileDialog(const QString& title, const QString& file) {
    onNextDialog([=](QDialog& dialog) {
        auto& files = *qobject_cast<QFileDialog*>(&dialog);
        QCOMPARE(files.objectName(), QString("CDialog"));
        QCOMPARE(files.windowTitle(), title);
        if (file.isEmpty()) {
            files.reject();
            return;
        }
        files.setDirectory(QFileInfo(file).absolutePath());
        files.findChild<QLineEdit*>("fileNameEdit")->setText(file);
        QMetaObject::invokeMethod(&files, "accept");
    });
}

/// The program with a tour of two stops, whose properties are open while `act` runs.
struct Properties {
    Properties() : window(program.parts()) { window.load(program.makeTour(QStringLiteral("walk"), 2)); }

    void open(std::function<void(QDialog&)> act) {
        bool opened = false;
        onNextDialog([&opened, act = std::move(act)](QDialog& dialog) {
            opened = true;
            QCOMPARE(dialog.objectName(), QString("frmPropTab"));
            act(dialog);
        });
        window.dialogs().editTourProperties();
        QVERIFY(opened);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    TourModel& model() { return program.model; }

    UiFixture program;
    frmMain window;
};

} // namespace

class PropertiesTest final : public QObject {
    Q_OBJECT

private slots:
    void titleAndAuthorThatAreTooLongForTheirFieldsStayWhole() {
        Properties properties;
        const std::string tooLong(40'000, 't');
        properties.model().tourTitle = tooLong;
        properties.model().tourAuthor = tooLong;
        properties.open([](QDialog& dialog) { press(dialog, "OKButton"); });
        QVERIFY(properties.model().tourTitle == tooLong);
        QVERIFY(properties.model().tourAuthor == tooLong);
        properties.open([](QDialog& dialog) {
            auto& title = *dialog.findChild<QLineEdit*>("txtTourTitle");
            title.selectAll();
            QTest::keyClicks(&title, "Short");
            press(dialog, "OKButton");
        });
        QCOMPARE(properties.model().tourTitle, std::string("Short"));
        QVERIFY(properties.model().tourAuthor == tooLong);
    }

    void tabsAndControlsHaveTheirNamesAndCaptions() {
        Properties properties;
        properties.open([](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Tour Properties"));
            const auto& tabs = *dialog.findChild<QTabWidget*>("TabStrip1");
            QStringList captionsAndKeys;
            for (int i = 0; i < tabs.count(); ++i) {
                QCOMPARE(tabs.widget(i)->objectName(), QString("Frame%1").arg(i));
                captionsAndKeys.append(tabs.tabText(i) + "=" + tabs.tabBar()->tabData(i).toString());
            }
            QCOMPARE(captionsAndKeys, (QStringList{"General=general", "Caching=cache", "Launching=single",
                                                   "Layout=layout", "Logo=logo"}));
            const QList<QPair<const char*, const char*>> captions = {
                {"lblTitle", "Tour Title :"},
                {"Label7", "Tour Author (optional):"},
                {"chkAddInstructions", "Automatically add user instructions after each narration text"},
                {"chkBufFlag", "Start Automatic Loading when tour is started"},
                {"Label6",
                 "(Note: Caching is disabled in author mode. Settings entered here will apply in tour "
                 "mode.)"},
                {"Label2", "URL of Launching point :"},
                {"btnAddLURL", "Add"},
                {"Label3", "Tour will be launched from :"},
                {"btnRemoveLURL", "Remove"},
                {"Label8",
                 "This information is necessary to return the user to the starting (launching) point "
                 "of the tour after the Exit button is clicked. A tour may be launched from multiple "
                 "locations. Enter a URL for each launching point for the tour."},
                {"Label4", "Browser Frame"},
                {"Label5", "Narration Frame"},
                {"btnResetLayout", "Reset to Default Settings"},
                {"btnAdvBrowse", "Select New Logo"},
                {"btnGraphReset", "Reset to Default Settings"},
                {"OKButton", "OK"},
                {"CancelButton", "Cancel"},
            };
            for (const auto& [name, text] : captions)
                QCOMPARE(caption(dialog.findChild<QWidget*>(name)), QString(text));
            QCOMPARE(caption(tabs.widget(1)->findChild<QWidget*>("Label1")),
                     QString("Maximum time (in seconds) alloted for loading each stop :"));
            press(dialog, "CancelButton");
        });
    }

    void dialogShowsTheModel() {
        Properties properties;
        TourModel& model = properties.model();
        model.tourTitle = toUtf8("Fl\u00fcsse");
        model.tourAuthor = "Ann";
        model.autoInstruction = false;
        model.bufferDelay = 45;
        model.autoBuffer = true;
        model.launchURLCount = 2;
        model.launchURL[0] = "http://one/";
        model.launchURL[1] = "http://two/";
        model.narHeight = 120;
        model.advWidth = 80;
        model.navWidth = 70;
        properties.open([](QDialog& dialog) {
            QCOMPARE(dynamic_cast<frmPropTab&>(dialog).currentTab(), std::int16_t{1});
            QCOMPARE(field(dialog, "txtTourTitle").text(), QString("Fl\u00fcsse"));
            QCOMPARE(field(dialog, "txtAuthor").text(), QString("Ann"));
            QVERIFY(box(dialog, "chkAddInstructions").isChecked()); // Always.
            QCOMPARE(field(dialog, "txtCachePeriod").text(), QString("45"));
            QVERIFY(box(dialog, "chkBufFlag").isChecked());
            QCOMPARE(list(dialog).count(), 2);
            QCOMPARE(list(dialog).item(1)->text(), QString("http://two/"));
            QCOMPARE(field(dialog, "txtNarHeight").text(), QString("120"));
            QCOMPARE(field(dialog, "txtAdvWidth").text(), QString("80"));
            QCOMPARE(field(dialog, "txtNavWidth").text(), QString("70"));
            press(dialog, "CancelButton");
        });
        QVERIFY(!model.autoInstruction);
        QVERIFY(!model.tourChanged);
    }

    void clickedTabIsTheOneOnShow() {
        Properties properties;
        properties.open([](QDialog& dialog) {
            auto& tabs = *dialog.findChild<QTabWidget*>("TabStrip1");
            for (int i = tabs.count() - 1; i >= 0; --i) {
                QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(i).center());
                QCOMPARE(dynamic_cast<frmPropTab&>(dialog).currentTab(), static_cast<std::int16_t>(i + 1));
                for (int page = 0; page < tabs.count(); ++page)
                    QCOMPARE(tabs.widget(page)->isVisible(), page == i);
            }
            press(dialog, "CancelButton");
        });
    }

    void tabGoesThroughAPageFromTopToBottom_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QStringList>("stations");
        QTest::newRow("General") << 0
                                 << QStringList{"txtTourTitle", "txtAuthor", "chkAddInstructions",
                                                "cboLanguage"};
        QTest::newRow("Caching") << 1 << QStringList{"txtCachePeriod", "chkBufFlag"};
        QTest::newRow("Launching") << 2
                                   << QStringList{"txtLaunchURL", "btnAddLURL", "lstLaunchURLList",
                                                  "btnRemoveLURL"};
        QTest::newRow("Layout") << 3
                                << QStringList{"txtAdvWidth", "txtNarHeight", "txtNavWidth", "btnResetLayout",
                                               "chkBesidePage"};
        QTest::newRow("Logo") << 4 << QStringList{"btnAdvBrowse", "btnGraphReset"};
    }

    void tabGoesThroughAPageFromTopToBottom() {
        QFETCH(int, tab);
        QFETCH(QStringList, stations);
        Properties properties;
        properties.open([&](QDialog& dialog) {
            QTRY_VERIFY_WITH_TIMEOUT(hasKeys(dialog), patience);
            auto& tabs = *dialog.findChild<QTabWidget*>("TabStrip1");
            tabs.setCurrentIndex(tab);
            tabs.tabBar()->setFocus();
            QStringList reached;
            for (qsizetype i = 0; i < stations.size() + 2; ++i) {
                QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
                reached.append(QApplication::focusWidget()->objectName());
            }
            QCOMPARE(reached, stations + QStringList({"OKButton", "CancelButton"}));
            press(dialog, "CancelButton");
        });
    }

    void okAtOnceChangesNothingButTheInstructions() {
        Properties properties;
        TourModel& model = properties.model();
        model.autoInstruction = false;
        model.launchURLCount = 1;
        model.launchURL[0] = "http://one/";
        const TourModel before = model;
        QVERIFY(QFile::remove(properties.program.working("toc.htm")));
        const QByteArray logo =
            QByteArray::fromStdString(test::readFile(toUtf8(properties.program.working("fr-logo.gif"))));
        properties.open([](QDialog& dialog) { press(dialog, "OKButton"); });
        QVERIFY(model.autoInstruction);
        QVERIFY(model.tourChanged);
        QCOMPARE(model.tourTitle, before.tourTitle);
        QCOMPARE(model.tourAuthor, before.tourAuthor);
        QCOMPARE(model.bufferDelay, before.bufferDelay);
        QCOMPARE(model.autoBuffer, before.autoBuffer);
        QCOMPARE(model.launchURLCount, before.launchURLCount);
        QCOMPARE(model.narHeight, before.narHeight);
        QCOMPARE(model.advWidth, before.advWidth);
        QCOMPARE(model.navWidth, before.navWidth);
        QVERIFY(QFile::exists(properties.program.working("toc.htm")));
        QVERIFY(QFile::exists(properties.program.working("link.txt")));
        QCOMPARE(QByteArray::fromStdString(test::readFile(toUtf8(properties.program.working("fr-logo.gif")))),
                 logo);
    }

    void languageAndLayoutAreShownStoredAndLeft() {
        Properties properties;
        TourModel& model = properties.model();
        properties.open([](QDialog& dialog) {
            auto& language = *dialog.findChild<QComboBox*>("cboLanguage");
            QCOMPARE(language.currentText(), QString("English"));
            QVERIFY(!box(dialog, "chkBesidePage").isChecked());
            language.setFocus();
            QTest::keyClicks(&language, "Deu");
            QCOMPARE(language.currentText(), QString("Deutsch"));
            box(dialog, "chkBesidePage").click();
            press(dialog, "OKButton");
        });
        QCOMPARE(model.language, std::string("de"));
        QVERIFY(model.wordsBesidePage);
        QVERIFY(QFile::exists(properties.program.working("tourchoices.js")));
        model.language = "sv";
        properties.open([](QDialog& dialog) {
            QCOMPARE(dialog.findChild<QComboBox*>("cboLanguage")->currentText(), QString("sv"));
            QVERIFY(box(dialog, "chkBesidePage").isChecked());
            press(dialog, "OKButton");
        });
        QCOMPARE(model.language, std::string("sv"));
        properties.open([](QDialog& dialog) {
            dialog.findChild<QComboBox*>("cboLanguage")->setCurrentIndex(0);
            box(dialog, "chkBesidePage").click();
            press(dialog, "OKButton");
        });
        QCOMPARE(model.language, std::string());
        QVERIFY(!model.wordsBesidePage);
        QVERIFY(!QFile::exists(properties.program.working("tourchoices.js")));
    }

    void okStoresEveryField() {
        Properties properties;
        properties.open([](QDialog& dialog) {
            field(dialog, "txtTourTitle").setText("  Rivers ");
            field(dialog, "txtAuthor").setText("Ann");
            box(dialog, "chkAddInstructions").click();
            field(dialog, "txtCachePeriod").setText("40 seconds");
            box(dialog, "chkBufFlag").click();
            field(dialog, "txtNarHeight").setText("150");
            field(dialog, "txtAdvWidth").setText("60");
            field(dialog, "txtNavWidth").setText("0");
            press(dialog, "OKButton");
        });
        const TourModel& model = properties.model();
        QCOMPARE(model.tourTitle, std::string("  Rivers "));
        QCOMPARE(model.tourAuthor, std::string("Ann"));
        QVERIFY(!model.autoInstruction);
        QCOMPARE(model.bufferDelay, 40);
        QVERIFY(model.autoBuffer);
        QCOMPARE(model.narHeight, std::int16_t{150});
        QCOMPARE(model.advWidth, std::int16_t{60});
        QCOMPARE(model.navWidth, std::int16_t{0});
    }

    void previewShowsTheNewSettingsAlsoAfterCancelling() {
        Properties properties;
        for (const char* button : {"OKButton", "CancelButton"}) {
            properties.model().currentStop = 1;
            QFile::remove(properties.program.working("tmpframe.htm"));
            properties.open([button](QDialog& dialog) { press(dialog, button); });
            QVERIFY(QFile::exists(properties.program.working("tmpframe.htm")));
        }
    }

    void launchingPointIsAddedOnceAndTrimmed() {
        Properties properties;
        properties.open([&](QDialog& dialog) {
            const auto add = [&dialog](const char* text) {
                field(dialog, "txtLaunchURL").setText(text);
                press(dialog, "btnAddLURL");
            };
            expectMessage("URL cannot be blank");
            add("   ");
            QCOMPARE(properties.program.beeps, 1);
            add(" http://host/a ");
            QCOMPARE(field(dialog, "txtLaunchURL").text(), QString(" http://host/a "));
            expectMessage("URL already listed");
            add("http://host/a  ");
            QCOMPARE(properties.program.beeps, 2);
            add("http://host/A");
            QCOMPARE(list(dialog).count(), 2);
            QCOMPARE(list(dialog).item(0)->text(), QString("http://host/a"));
            press(dialog, "OKButton");
        });
        QCOMPARE(properties.model().launchURLCount, std::int16_t{2});
        QCOMPARE(properties.model().launchURL[1], std::string("http://host/A"));
    }

    void hundredAndFirstLaunchingPointOnlyBeeps() {
        Properties properties;
        properties.open([&](QDialog& dialog) {
            for (int i = 1; i <= 101; ++i) {
                field(dialog, "txtLaunchURL").setText(QString("http://host/%1").arg(i));
                press(dialog, "btnAddLURL");
            }
            QCOMPARE(list(dialog).count(), 100);
            QCOMPARE(properties.program.beeps, 1);
            press(dialog, "OKButton");
        });
        QCOMPARE(properties.model().launchURLCount, std::int16_t{100});
    }

    void selectedLaunchingPointGoesIntoTheFieldAndCanBeRemoved() {
        Properties properties;
        properties.model().launchURLCount = 2;
        properties.model().launchURL[0] = "http://one/";
        properties.model().launchURL[1] = "http://two/";
        properties.open([&](QDialog& dialog) {
            dialog.findChild<QTabWidget*>("TabStrip1")->setCurrentIndex(2);
            press(dialog, "btnRemoveLURL");
            QCOMPARE(properties.program.beeps, 1);
            QCOMPARE(list(dialog).count(), 2);
            QTest::mouseClick(list(dialog).viewport(), Qt::LeftButton, {},
                              list(dialog).visualItemRect(list(dialog).item(1)).center());
            QCOMPARE(field(dialog, "txtLaunchURL").text(), QString("http://two/"));
            press(dialog, "btnRemoveLURL");
            QCOMPARE(list(dialog).count(), 1);
            press(dialog, "OKButton");
        });
        QCOMPARE(properties.model().launchURLCount, std::int16_t{1});
        QCOMPARE(properties.model().launchURL[0], std::string("http://one/"));
    }

    void textThatIsNoNumberTurnsALayoutFieldBack() {
        Properties properties;
        properties.open([&](QDialog& dialog) {
            dialog.findChild<QTabWidget*>("TabStrip1")->setCurrentIndex(3);
            int beeps = 0;
            for (const char* name : {"txtNarHeight", "txtAdvWidth", "txtNavWidth"}) {
                QLineEdit& dimension = field(dialog, name);
                const QString current = dimension.text();
                dimension.selectAll();
                QTest::keyClicks(&dimension, "12");
                QCOMPARE(dimension.text(), QString("12"));
                QTest::keyClicks(&dimension, "a");
                QCOMPARE(dimension.text(), current);
                QCOMPARE(properties.program.beeps, ++beeps);
            }
            press(dialog, "CancelButton");
        });
    }

    void resetOfTheLayoutAndCancelLeaveTheModel() {
        Properties properties;
        properties.model().narHeight = 150;
        properties.model().advWidth = 60;
        properties.model().navWidth = 70;
        properties.open([](QDialog& dialog) {
            press(dialog, "btnResetLayout");
            QCOMPARE(field(dialog, "txtNarHeight").text(), QString("100"));
            QCOMPARE(field(dialog, "txtAdvWidth").text(), QString("110"));
            QCOMPARE(field(dialog, "txtNavWidth").text(), QString("94"));
            press(dialog, "CancelButton");
        });
        QCOMPARE(properties.model().narHeight, std::int16_t{150});
    }

    void spinnerStepsInsideItsRange() {
        Properties properties;
        properties.open([](QDialog& dialog) {
            dialog.findChild<QTabWidget*>("TabStrip1")->setCurrentIndex(1);
            QLineEdit& period = field(dialog, "txtCachePeriod");
            auto* const up = dialog.findChild<QWidget*>("UpDown1")->findChild<QToolButton*>("Up");
            auto* const down = dialog.findChild<QWidget*>("UpDown1")->findChild<QToolButton*>("Down");
            const auto steps = [&](const QString& from, QToolButton* button, const QString& to) {
                period.setText(from);
                QTest::mouseClick(button, Qt::LeftButton);
                QCOMPARE(period.text(), to);
            };
            steps("30", up, "40");
            steps("30", down, "20");
            steps("15", down, "10");
            steps("995", up, "1000");
            steps("1000", up, "1000");
            steps("30 seconds", up, "40");
            steps("soon", up, "10");
            period.setText("50");
            QTest::keyClick(&period, Qt::Key_Up);
            QCOMPARE(period.text(), QString("60"));
            press(dialog, "CancelButton");
        });
    }

    void chosenLogoOutlivesTheDialogAndTheTour() {
        Properties properties;
        const QString logo = properties.program.path("Own Logo.gif");
        QVERIFY(QFile::copy(WENDMARK_ASSETS "/Template/grbullet.gif", logo));
        const std::string bytes = test::readFile(toUtf8(logo));
        properties.open([&](QDialog& dialog) {
            onFileDialog("Select Logo File", QString());
            press(dialog, "btnAdvBrowse");
            QVERIFY(dynamic_cast<frmPropTab&>(dialog).logoFile().empty());
            onFileDialog("Select Logo File", logo);
            press(dialog, "btnAdvBrowse");
            const QSize shown = dialog.findChild<QLabel*>("Picture1")->pixmap().size();
            QCOMPARE(shown, QImage(logo).size());
            press(dialog, "CancelButton");
            QCOMPARE(dynamic_cast<frmPropTab&>(dialog).logoFile(), toUtf8(logo));
        });
        QVERIFY(test::readFile(toUtf8(properties.program.working("fr-logo.gif"))) != bytes);
        properties.open([](QDialog& dialog) { press(dialog, "OKButton"); });
        QCOMPARE(test::readFile(toUtf8(properties.program.working("fr-logo.gif"))), bytes);
        // Reset takes the one of the templates.
        properties.open([](QDialog& dialog) {
            press(dialog, "btnGraphReset");
            press(dialog, "OKButton");
        });
        QCOMPARE(test::readFile(toUtf8(properties.program.working("fr-logo.gif"))),
                 test::readFile(toUtf8(properties.program.path("Template/fr-logo.gif"))));
    }

    void logoThatIsNoPictureShowsNothingNewAndIsOnlyCopied() {
        Properties properties;
        const QString logo = properties.program.path("no picture.gif");
        test::writeFile(toUtf8(logo), "words");
        properties.open([&](QDialog& dialog) {
            const QPixmap before = dialog.findChild<QLabel*>("Picture1")->pixmap();
            onFileDialog("Select Logo File", logo);
            press(dialog, "btnAdvBrowse");
            QCOMPARE(dialog.findChild<QLabel*>("Picture1")->pixmap().toImage(), before.toImage());
            press(dialog, "CancelButton");
        });
    }

    void nextLogoIsLookedForWhereTheLastOneWas() {
        Properties properties;
        const QString folder = properties.program.path("Logos");
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::copy(WENDMARK_ASSETS "/Template/grbullet.gif", folder + "/eel.gif"));
        properties.open([&](QDialog& dialog) {
            onFileDialog("Select Logo File", folder + "/eel.gif");
            press(dialog, "btnAdvBrowse");
            press(dialog, "CancelButton");
        });
        QString begun;
        properties.open([&](QDialog& dialog) {
            onNextDialog([&](QDialog& files) {
                begun = qobject_cast<QFileDialog*>(&files)->directory().absolutePath();
                files.reject();
            });
            press(dialog, "btnAdvBrowse");
            press(dialog, "CancelButton");
        });
        QCOMPARE(begun, folder);
    }

    // Options

    void optionsShowAndStoreTheirValues() {
        UiFixture program;
        program.options = {"/usr/bin/old", false, true};
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.objectName(), QString("frmOptions"));
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Options"));
            QCOMPARE(caption(dialog.findChild<QWidget*>("Label1")), QString("HTML Editor :"));
            QCOMPARE(caption(dialog.findChild<QWidget*>("btnBrowse")), QString("Browse"));
            QCOMPARE(caption(&box(dialog, "chkWarnURLChange")), QString("Warn before changing URL"));
            QCOMPARE(caption(&box(dialog, "chkCloseBrowser")),
                     QString("Automatically close browser window after selecting each URL"));
            QCOMPARE(field(dialog, "txtHTMLEdit").text(), QString("/usr/bin/old"));
            QVERIFY(!box(dialog, "chkWarnURLChange").isChecked());
            QVERIFY(box(dialog, "chkCloseBrowser").isChecked());
            field(dialog, "txtHTMLEdit").setText(" no such program ");
            box(dialog, "chkWarnURLChange").click();
            box(dialog, "chkCloseBrowser").click();
            press(dialog, "OKButton");
        });
        frmOptions dialog(program.options);
        runDialog(dialog);
        QCOMPARE(program.options.htmlEditorPath, std::string(" no such program "));
        QVERIFY(program.options.warnURLChange);
        QVERIFY(!program.options.autoCloseBrowser);
    }

    void cancelledOptionsStay() {
        UiFixture program;
        program.options = {"/usr/bin/old", true, false};
        onNextDialog([](QDialog& dialog) {
            field(dialog, "txtHTMLEdit").clear();
            box(dialog, "chkWarnURLChange").click();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        frmOptions dialog(program.options);
        runDialog(dialog);
        QCOMPARE(program.options.htmlEditorPath, std::string("/usr/bin/old"));
        QVERIFY(program.options.warnURLChange);
    }

    void browseOffersProgramsAndKeepsThePathWhenCancelled() {
        UiFixture program;
        program.options.htmlEditorPath = "/usr/bin/old";
        test::writeFile(program.scratch / "bin/notes.txt", "text");
        test::writeFile(program.scratch / "bin/editor", "#!/bin/sh\n");
        QVERIFY(QFile::setPermissions(program.path("bin/editor"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
        onNextDialog([&](QDialog& dialog) {
            onFileDialog("Select HTML Editor", QString());
            press(dialog, "btnBrowse");
            QCOMPARE(field(dialog, "txtHTMLEdit").text(), QString("/usr/bin/old"));
            onNextDialog([&](QDialog& chooser) {
                auto& files = *qobject_cast<QFileDialog*>(&chooser);
                files.setDirectory(program.path("bin"));
                const QAbstractItemModel& shown = *files.proxyModel();
                const auto* const view = files.findChild<QAbstractItemView*>("listView");
                const auto names = [&] {
                    QStringList all;
                    for (int row = 0; row < shown.rowCount(view->rootIndex()); ++row)
                        all.append(shown.index(row, 0, view->rootIndex()).data().toString());
                    return all;
                };
                QVERIFY(test::waitUntil([&] { return names() == QStringList{"editor"}; }));
                files.findChild<QLineEdit*>("fileNameEdit")->setText(program.path("bin/editor"));
                QMetaObject::invokeMethod(&files, "accept");
            });
            press(dialog, "btnBrowse");
            QCOMPARE(field(dialog, "txtHTMLEdit").text(), program.path("bin/editor"));
            press(dialog, "OKButton");
        });
        frmOptions dialog(program.options);
        runDialog(dialog);
        QCOMPARE(test::dialogsExpected(), 0);
    }

    void changedOptionIsThereAtTheNextStart() {
        UiFixture program;
        {
            frmMain window(program.parts());
            window.load(program.makeTour("walk", 1));
            onNextDialog([](QDialog& dialog) {
                field(dialog, "txtHTMLEdit").setText("/usr/bin/editor");
                press(dialog, "OKButton");
            });
            window.dialogs().editOptions();
            QCOMPARE(program.settings.read(mainSettings::htmlEditor), QString("NONE"));
            QVERIFY(window.close());
        }
        program.options = {};
        frmMain window(program.parts());
        window.load(program.path("MyTours/walk"));
        QCOMPARE(program.options.htmlEditorPath, std::string("/usr/bin/editor"));
    }

    // Launching information

    void launchingInformationShowsItsTextAndPrintsNothingWithoutPoints() {
        UiFixture program;
        QSignalSpy printed(&program.desktop, &QtDesktop::beeped);
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Launching Information"));
            QCOMPARE(caption(dialog.findChild<QWidget*>("Label1")), QString("Launching a Tour:"));
            const auto& text = *dialog.findChild<QPlainTextEdit*>("Text1");
            QVERIFY(text.isReadOnly());
            QVERIFY(text.toPlainText().contains("\n    NO LAUNCHING POINTS SPECIFIED\n"));
            press(dialog, "btnPrint");
            press(dialog, "btnExit");
        });
        frmLaunch dialog(program.document, program.desktop);
        const QSignalSpy file(&dialog, &frmLaunch::printedToFile);
        runDialog(dialog);
        QCOMPARE(printed.count(), 1);
        QCOMPARE(file.count(), 0);
    }

    void launchingPointsArePrintedIntoANewFileWhenThereIsNoPrinter() {
        UiFixture program;
        program.model.tourTitle = "A/B: \"Rivers\"?";
        program.model.launchURLCount = 10;
        for (std::size_t i = 0; i < 10; ++i)
            program.model.launchURL.at(i) = "http://host/" + std::to_string(i + 1);
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        QDir(documents).removeRecursively();
        QStringList files;
        onNextDialog([](QDialog& dialog) {
            press(dialog, "btnPrint");
            press(dialog, "btnPrint");
            dialog.close();
        });
        frmLaunch dialog(program.document, program.desktop);
        connect(&dialog, &frmLaunch::printedToFile, this, [&](const QString& file) { files.append(file); });
        runDialog(dialog);
        QCOMPARE(program.beeps, 2);
        QCOMPARE(files, (QStringList{documents + "/A B Rivers.pdf", documents + "/A B Rivers (2).pdf"}));
        QProcess words;
        words.start("pdftotext", {"-layout", files.first(), "-"});
        QVERIFY(words.waitForFinished(patience));
        const QString text = QString::fromUtf8(words.readAllStandardOutput()).simplified();
        QVERIFY2(text.startsWith("Launching URLs A/B: \"Rivers\"? 1. When"), qPrintable(text));
        QVERIFY(
            text.contains("9. When launching from 'http://host/9' hyperlink to '_tourlaunch9.htm' 10. When"));
        QVERIFY(text.contains("'_tourlaunch10.htm'"));
    }

    void documentsFolderThatCannotBeWrittenIsALineInTheLogAndABeep() {
        UiFixture program;
        program.model.launchURLCount = 1;
        program.model.launchURL[0] = "http://host/";
        const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        QDir(documents).removeRecursively();
        test::writeFile(toUtf8(documents), "a file stands there");
        onNextDialog([](QDialog& dialog) {
            press(dialog, "btnPrint");
            dialog.close();
        });
        frmLaunch dialog(program.document, program.desktop);
        runDialog(dialog);
        QFile::remove(documents);
        QCOMPARE(program.beeps, 1);
        QCOMPARE(program.log.failures, std::vector<std::string>{"cannot print the launching points"});
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    const wendmark::test::OwnHome home;
    QApplication application(argc, argv);
    wendmark::PropertiesTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "PropertiesTest.moc"
