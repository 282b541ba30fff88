#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/frmPrint.h"
#include "ui/main/frmMain.h"
#include "ui/printing/TourPrinter.h"
#include "ui/support/OwnHome.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QProcess>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <functional>

namespace wendmark {

using test::onNextDialog;
using test::press;
using test::UiFixture;

namespace {

QString outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(test::patience);
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// The words of each page of a PDF file.
QStringList pagesOf(const QString& file) {
    QStringList pages = outputOf("pdftotext", {"-layout", file, "-"}).split('\f');
    pages.removeLast();
    for (QString& page : pages)
        page = page.simplified();
    return pages;
}

/// A page as a picture, 96 dots per inch.
QImage pictureOf(const QString& file, int page) {
    const QString picture = file + ".picture";
    outputOf("pdftoppm", {"-png", "-r", "96", "-singlefile", "-f", QString::number(page), "-l",
                          QString::number(page), file, picture});
    return QImage(picture + ".png");
}

class Print final {
public:
    explicit Print(std::int16_t stops) {
        TourModel& model = program.model;
        model.tourTitle = "Rivers";
        model.stops.setCount(stops);
        for (std::int16_t n = 1; n <= stops; ++n) {
            const auto i = static_cast<std::size_t>(n - 1);
            model.stops.at(i + 1).stopTitle = "Title" + std::to_string(n);
            model.stops.at(i + 1).stopURL = "http://host/" + std::to_string(n);
            model.stops.at(i + 1).stopNarration = "Words <b>about</b> " + std::to_string(n);
            model.stops.at(i + 1).stopInstruction = "Do it.";
        }
        QDir(documents()).removeRecursively();
    }

    static QString documents() { return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation); }

    /// Opens the dialog, lets `choose` fill it, presses OK, and returns the pages that were printed.
    QStringList pages(const std::function<void(QDialog&)>& choose = [](QDialog&) {}) {
        onNextDialog([&](QDialog& dialog) {
            choose(dialog);
            press(dialog, "OKButton");
        });
        frmPrint dialog(program.document, {}, program.desktop);
        QObject::connect(&dialog, &frmPrint::printedToFile, &dialog,
                         [&](const QString& path) { file = path; });
        runDialog(dialog);
        return pagesOf(file);
    }

    UiFixture program;
    QString file;
};

void select(QDialog& dialog, const QString& from, const QString& to) {
    QTest::mouseClick(dialog.findChild<QRadioButton*>("optSelStops"), Qt::LeftButton);
    dialog.findChild<QRadioButton*>("optSelStops")->setChecked(true);
    dialog.findChild<QLineEdit*>("txtFrom")->setText(from);
    dialog.findChild<QLineEdit*>("txtTo")->setText(to);
}

/// Numbers of the stops on a page.
QString stopsOn(const QString& page) {
    QString stops;
    for (int n = 1; n <= 20; ++n) {
        if (page.contains(QRegularExpression(QString("Title%1\\b").arg(n))))
            stops += QString::number(n) + ' ';
    }
    return stops.trimmed();
}

} // namespace

class PrintTest final : public QObject {
    Q_OBJECT

private slots:
    void opensWithAllStopsAndEverythingIncluded() {
        Print print(4);
        onNextDialog([](QDialog& dialog) {
            QCOMPARE(dialog.windowTitle(), QString("Wendmark - Print"));
            QVERIFY(dialog.findChild<QRadioButton*>("optAllStops")->isChecked());
            QVERIFY(dialog.findChild<QCheckBox*>("chkImage")->isChecked());
            QVERIFY(dialog.findChild<QCheckBox*>("chkProp")->isChecked());
            press(dialog, "CancelButton");
        });
        frmPrint dialog(print.program.document, {}, print.program.desktop);
        runDialog(dialog);
        QVERIFY(!QDir(Print::documents()).exists());
    }

    void allStopsArePrintedThreeToAPageAndThePropertiesLast() {
        Print print(4);
        const QStringList pages = print.pages();
        QCOMPARE(pages.size(), 3);
        QVERIFY2(pages[0].startsWith("Rivers [ 1 of 3 ]"), qPrintable(pages[0]));
        QCOMPARE(stopsOn(pages[0]), QString("1 2 3"));
        QVERIFY2(pages[1].startsWith("Rivers [ 2 of 3 ]"), qPrintable(pages[1]));
        QCOMPARE(stopsOn(pages[1]), QString("4"));
        QVERIFY2(pages[2].startsWith("Rivers [ 3 of 3 ]"), qPrintable(pages[2]));
        QVERIFY(pages[2].contains("Caching Period :"));
        QCOMPARE(print.file, Print::documents() + "/Rivers.pdf");
    }

    void blockHoldsTitleAddressNarrationAndInstruction() {
        Print print(1);
        const QString page = print.pages().first();
        for (const char* words : {"Title1", "http://host/1", "Words about 1", "Do it."})
            QVERIFY2(page.contains(words), qPrintable(page));
        QVERIFY(!page.contains("<b>"));
    }

    void fullPagesLeaveNoEmptyOne_data() {
        QTest::addColumn<int>("stops");
        QTest::addColumn<int>("pages");
        QTest::newRow("3") << 3 << 2;
        QTest::newRow("6") << 6 << 3;
        QTest::newRow("7") << 7 << 4;
        QTest::newRow("none") << 0 << 1;
        QTest::newRow("100") << 100 << 35;
    }
    void fullPagesLeaveNoEmptyOne() {
        QFETCH(int, stops);
        QFETCH(int, pages);
        Print print(static_cast<std::int16_t>(stops));
        QCOMPARE(print.pages().size(), pages);
    }

    void rangesArePrintedInsideTheTour_data() {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("printed");
        QTest::newRow("5 to 2") << "5"
                                << "2"
                                << "5";
        QTest::newRow("2 to 4") << "2"
                                << "4"
                                << "2 3 4";
        QTest::newRow("0 to 2") << "0"
                                << "2"
                                << "1 2";
        QTest::newRow("-3 to 1") << "-3"
                                 << "1"
                                 << "1";
        QTest::newRow("9 to 99") << "9"
                                 << "99"
                                 << "9 10";
        QTest::newRow("99 to 1") << "99"
                                 << "1"
                                 << "10";
    }
    void rangesArePrintedInsideTheTour() {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, printed);
        Print print(10);
        const QStringList pages = print.pages([&](QDialog& dialog) { select(dialog, from, to); });
        QCOMPARE(pages.size(), 2);
        QCOMPARE(stopsOn(pages.first()), printed);
    }

    void propertiesArePrintedAlsoWhenTheirBoxIsCleared() {
        Print print(4);
        const QStringList pages =
            print.pages([](QDialog& dialog) { dialog.findChild<QCheckBox*>("chkProp")->setChecked(false); });
        QCOMPARE(pages.size(), 3);
        QVERIFY2(pages[0].startsWith("Rivers [ 1 of 2 ]"), qPrintable(pages[0]));
        QVERIFY2(pages[1].startsWith("Rivers [ 2 of 2 ]"), qPrintable(pages[1]));
        QVERIFY2(pages[2].startsWith("Rivers [ 2 of 2 ]"), qPrintable(pages[2]));
        QVERIFY(pages[2].contains("Logo File Name :"));
    }

    void imageBoxChangesNothing() {
        Print with(2);
        const QStringList pages = with.pages();
        Print without(2);
        QCOMPARE(without.pages(
                     [](QDialog& dialog) { dialog.findChild<QCheckBox*>("chkImage")->setChecked(false); }),
                 pages);
    }

    void rangeFieldsAreFilledByTheirButton() {
        Print print(7);
        print.pages([](QDialog& dialog) {
            QVERIFY(!dialog.findChild<QLineEdit*>("txtFrom")->isEnabled());
            dialog.findChild<QRadioButton*>("optSelStops")->setChecked(true);
            QCOMPARE(dialog.findChild<QLineEdit*>("txtFrom")->text(), QString("1"));
            QCOMPARE(dialog.findChild<QLineEdit*>("txtTo")->text(), QString("7"));
        });
    }

    void lettersArePutRight() {
        Print print(7);
        print.pages([&](QDialog& dialog) {
            dialog.findChild<QRadioButton*>("optSelStops")->setChecked(true);
            auto& from = *dialog.findChild<QLineEdit*>("txtFrom");
            auto& to = *dialog.findChild<QLineEdit*>("txtTo");
            from.setText("3");
            QTest::keyClicks(&from, "x");
            QCOMPARE(from.text(), QString("1"));
            to.setText("3");
            QTest::keyClicks(&to, "x");
            QCOMPARE(to.text(), QString("7"));
            QCOMPARE(print.program.beeps, 2);
            QTest::keyClick(&from, Qt::Key_Backspace); // Leaves nothing, which is no number.
            QCOMPARE(from.text(), QString("1"));
        });
    }

    void longTextIsShortenedInsideItsBlock() {
        Print print(3);
        std::string words;
        for (int n = 1; n <= 2000; ++n)
            words += "word" + std::to_string(n) + (n % 50 == 0 ? "<br>\r\n" : " ");
        print.program.model.stops.at(1).stopNarration = words;
        const QString page = print.pages().first();
        QVERIFY(page.contains("word50"));
        QVERIFY(!page.contains("word2000"));
        QVERIFY(page.contains(QChar(0x2026)));
        QCOMPARE(stopsOn(page), QString("1 2 3"));
        // The strip between the first and the second block stays white.
        const QImage picture = pictureOf(print.file, 1);
        QVERIFY(!picture.isNull());
        const double margin = 18 / 25.4 * 96;
        const double top = margin + 48;
        const double height = (picture.height() - margin - top) / 3;
        const int strip = static_cast<int>(top + height - 14);
        for (int y = strip; y < strip + 4; ++y) {
            for (int x = 0; x < picture.width(); ++x)
                QVERIFY2(qGray(picture.pixel(x, y)) > 200, qPrintable(QString("%1,%2").arg(x).arg(y)));
        }
    }

    void otherLettersArePrinted() {
        Print print(1);
        print.program.model.stops.at(1).stopTitle =
            "\xCE\xA0\xCE\xBF\xCF\x84\xCE\xB1\xCE\xBC\xCF\x8C\xCF\x82 \xC3\xA4";
        QVERIFY(print.pages().first().contains(QString::fromUtf8("Ποταμός ä")));
    }

    void launchingPointsStandOnTheSheet() {
        Print print(1);
        print.program.model.singleWindow = true;
        print.program.model.launchURLCount = 100;
        for (std::size_t i = 0; i < 100; ++i)
            print.program.model.launchURL.at(i) = "http://start/" + std::to_string(i + 1);
        const QString sheet = print.pages().last();
        QVERIFY(sheet.contains("http://start/1 _tourlaunch1.htm"));
        QVERIFY2(sheet.contains(QRegularExpression("\\.\\.\\. and \\d+ more")), qPrintable(sheet));
        QCOMPARE(print.pages().size(), 2);
    }

    void commandOpensTheDialogAndTellsWhereThePagesAre() {
        Print print(0);
        frmMain window(print.program.parts());
        window.load(print.program.makeTour("walk", 3));
        window.show();
        onNextDialog([](QDialog& dialog) { press(dialog, "OKButton"); });
        window.runToolBarCommand("Print");
        QCOMPARE(test::noticeOf(window), "Printed to " + Print::documents() + "/Test tour.pdf");
    }

    void folderThatCannotBeWrittenIsALineInTheLog() {
        Print print(1);
        test::writeFile(toUtf8(Print::documents()), "a file stands there");
        onNextDialog([](QDialog& dialog) { press(dialog, "OKButton"); });
        frmPrint dialog(print.program.document, {}, print.program.desktop);
        runDialog(dialog);
        QFile::remove(Print::documents());
        QCOMPARE(print.program.log.failures, std::vector<std::string>{"cannot print the tour"});
    }
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    const wendmark::test::OwnHome home;
    QApplication application(argc, argv);
    wendmark::PrintTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "PrintTest.moc"
