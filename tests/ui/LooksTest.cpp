#include "ui/looks/Looks.h"

#include "platform/BrowserView.h"
#include "ui/dialogs/frmHelp.h"
#include "ui/looks/DarkWish.h"
#include "ui/looks/LookPalette.h"
#include "ui/looks/LookStyle.h"
#include "ui/looks/Strokes.h"
#include "ui/support/Patience.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTest>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <initializer_list>
#include <memory>

namespace wendmark {

using test::patience;
using test::UiFixture;

namespace {

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// As the guidelines for accessible pages count it, 1 to 21.
double contrast(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax(luminance(one), luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

/// Rows of a picture of so many pixels to one of the program's, in which a hairline along the upper side has
/// left anything, and whether it is all of its colour.
QList<QColor> rowsOfHairline(qreal scale, qreal top) {
    QImage picture(qRound(20 * scale), qRound(20 * scale), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    drawHairline(painter, QRectF(0, top, 20, 10), Side::top, Qt::black);
    painter.end();
    QList<QColor> rows;
    for (int y = 0; y < picture.height(); ++y) {
        const QColor colour = picture.pixelColor(picture.width() / 2, y);
        if (colour != Qt::white)
            rows.append(colour);
    }
    return rows;
}

QColor colourAt(const QWidget& button, const QPoint& place) {
    return const_cast<QWidget&>(button).grab().toImage().pixelColor(place);
}

QImage messageIcon(const QStyle& style, QStyle::StandardPixmap icon) {
    return style.standardIcon(icon).pixmap(40, 40).toImage();
}

} // namespace

class LooksTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanup() {
        QApplication::setStyle(QStringLiteral("fusion"));
        QApplication::setPalette(QApplication::style()->standardPalette());
        qunsetenv("QT_STYLE_OVERRIDE");
        qunsetenv("GTK_THEME");
    }

    void desktopWithoutAThemeGetsTheLooks() {
        QVERIFY(!desktopBringsLooks());
        const Looks looks;
        QVERIFY(qobject_cast<LookStyle*>(QApplication::style()) != nullptr);
        QCOMPARE(QApplication::palette().color(QPalette::Highlight), accentColour(false));
        QVERIFY(QApplication::font().pointSizeF() >= 10);
    }

    void desktopWithColoursOfItsOwnKeepsThem() {
        QApplication::setPalette(QPalette(Qt::darkGreen));
        QVERIFY(desktopBringsLooks());
        const Looks looks;
        QVERIFY(qobject_cast<LookStyle*>(QApplication::style()) == nullptr);
        QCOMPARE(QApplication::palette().color(QPalette::Button), QColor(Qt::darkGreen));
    }

    void styleOfTheDesktopOrTheAuthorIsKept() {
        qputenv("QT_STYLE_OVERRIDE", "fusion");
        QVERIFY(desktopBringsLooks());
        qunsetenv("QT_STYLE_OVERRIDE");
        QApplication::setStyle(QStringLiteral("windows"));
        QVERIFY(desktopBringsLooks());
    }

    void themeThatIsDarkByNameIsFollowed() {
        qputenv("GTK_THEME", "Adwaita:dark");
        QVERIFY(DarkWish().isDark());
        const Looks looks;
        QCOMPARE(QApplication::palette().color(QPalette::Highlight), accentColour(true));
        qputenv("GTK_THEME", "Adwaita");
        QVERIFY(!DarkWish().isDark());
    }

    void accentIsTheColourOfTheSign() {
        applyLooks(false); // Loads the icons.
        messageIcon(*QApplication::style(), QStyle::SP_MessageBoxWarning);
        QFile sign(QStringLiteral(":/icons/wendmark.svg"));
        QVERIFY(sign.open(QIODevice::ReadOnly));
        const auto fill = QRegularExpression(QStringLiteral("<rect[^>]*fill=\"(#[0-9a-f]{6})\""))
                              .match(QString::fromUtf8(sign.readAll()));
        QVERIFY(fill.hasMatch());
        QCOMPARE(accentColour(false), QColor(fill.captured(1)));
        QVERIFY(std::abs(accentColour(false).hsvHue() - accentColour(true).hsvHue()) <= 3);
    }

    void textsAndEdgesStandOut_data() {
        QTest::addColumn<bool>("dark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }
    void textsAndEdgesStandOut() {
        QFETCH(const bool, dark);
        const QPalette palette = lookPalette(dark);
        const auto between = [&palette](QPalette::ColorRole one, QPalette::ColorRole other) {
            return contrast(palette.color(one), palette.color(other));
        };
        for (const auto paper :
             {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button}) {
            for (const auto text :
                 {QPalette::WindowText, QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited})
                QVERIFY2(between(text, paper) >= 4.5,
                         qPrintable(QStringLiteral("%1 on %2").arg(text).arg(paper)));
        }
        QVERIFY(between(QPalette::HighlightedText, QPalette::Highlight) >= 4.5);
        for (const auto paper : {QPalette::Window, QPalette::Base}) {
            QVERIFY2(between(QPalette::Mid, paper) >= 3, qPrintable(QString::number(paper)));
            QVERIFY2(between(QPalette::Highlight, paper) >= 3, qPrintable(QString::number(paper)));
        }
    }

    void hairlinesAreWholePixelsOfTheScreen_data() {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("pixels");
        QTest::newRow("100 %") << 1.0 << 1;
        QTest::newRow("125 %") << 1.25 << 1;
        QTest::newRow("150 %") << 1.5 << 1;
        QTest::newRow("200 %") << 2.0 << 2;
    }
    void hairlinesAreWholePixelsOfTheScreen() {
        QFETCH(const qreal, scale);
        QFETCH(const int, pixels);
        for (int top = 0; top < 8; ++top)
            QCOMPARE(rowsOfHairline(scale, top), QList<QColor>(pixels, QColor(Qt::black)));
    }

    void firstChoiceIsFilledWithTheAccent_data() { textsAndEdgesStandOut_data(); }
    void firstChoiceIsFilledWithTheAccent() {
        QFETCH(const bool, dark);
        applyLooks(dark);
        QDialog dialog;
        auto* const layout = new QHBoxLayout(&dialog);
        auto* const first = new QPushButton(QStringLiteral("OK"), &dialog);
        auto* const second = new QPushButton(QStringLiteral("Cancel"), &dialog);
        auto* const field = new QScrollBar(&dialog); // Has the keyboard, so that no button shows it.
        first->setDefault(true);
        second->setAutoDefault(false);
        field->setFocusPolicy(Qt::StrongFocus);
        for (QWidget* const control : std::initializer_list<QWidget*>{field, first, second})
            layout->addWidget(control);
        field->setFocus();
        const QPoint beside(8, 8);
        QCOMPARE(colourAt(*first, beside), accentColour(dark));
        QCOMPARE(colourAt(*second, beside), QApplication::palette().color(QPalette::Button));
        QVERIFY(first->height() >= 32);
        first->setEnabled(false);
        QVERIFY(colourAt(*first, beside) != accentColour(dark));
    }

    void primaryToolButtonHasLightInkOnTheAccent() {
        applyLooks(false);
        QToolButton button;
        button.setText(QStringLiteral("Use"));
        button.setProperty("isPrimary", true);
        button.resize(button.sizeHint());
        const QImage picture = button.grab().toImage();
        QCOMPARE(picture.pixelColor(picture.width() / 2, 3), accentColour(false));
        bool hasInk = false;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                hasInk = hasInk || contrast(picture.pixelColor(x, y), accentColour(false)) >= 4.5;
        }
        QVERIFY(hasInk);
    }

    void messagesHaveIconsOfTheProgramsOwn_data() { textsAndEdgesStandOut_data(); }
    void messagesHaveIconsOfTheProgramsOwn() {
        QFETCH(const bool, dark);
        applyLooks(dark);
        const std::unique_ptr<QStyle> toolkit(QStyleFactory::create(QStringLiteral("fusion")));
        QList<QImage> icons;
        for (const auto icon : {QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion,
                                QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical}) {
            const QImage ours = messageIcon(*QApplication::style(), icon);
            QVERIFY(!ours.isNull() && !icons.contains(ours));
            QVERIFY(ours != messageIcon(*toolkit, icon));
            icons.append(ours);
            double most = 1;
            for (int y = 0; y < ours.height(); ++y) {
                for (int x = 0; x < ours.width(); ++x) {
                    if (ours.pixelColor(x, y).alpha() == 255)
                        most = std::max(most, contrast(ours.pixelColor(x, y),
                                                       QApplication::palette().color(QPalette::Window)));
                }
            }
            QVERIFY(most >= 4.5);
        }
    }

    void iconsAndRowsGrowWithTheText() {
        const LookStyle style;
        QFont large = QApplication::font();
        large.setPointSize(30);
        QStyleOptionButton usual;
        QStyleOptionButton larger;
        larger.fontMetrics = QFontMetrics(large);
        for (const auto metric :
             {QStyle::PM_SmallIconSize, QStyle::PM_IndicatorWidth, QStyle::PM_MessageBoxIconSize})
            QVERIFY(style.pixelMetric(metric, &larger, nullptr) > style.pixelMetric(metric, &usual, nullptr));
        const QSize text(40, larger.fontMetrics.height());
        QVERIFY(style.sizeFromContents(QStyle::CT_PushButton, &larger, text, nullptr).height() >=
                text.height());
        QCOMPARE(style.sizeFromContents(QStyle::CT_PushButton, &usual, QSize(40, 15), nullptr).height(), 32);
    }

    void helpIsDarkInDarkWindows() {
        UiFixture program;
        std::filesystem::copy(WENDMARK_ASSETS "/Help", program.scratch / "Help");
        applyLooks(true);
        frmHelp help(*program.profile, program.path(QStringLiteral("Help")));
        const auto paper = [&help] { return help.grab().toImage().pixelColor(10, 400); };
        help.showPage(program.path(QStringLiteral("Help/index.htm")));
        const auto& view = *help.findChild<BrowserView*>();
        QTRY_VERIFY_WITH_TIMEOUT(!view.isBusy() && view.locationName().contains("Help"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(paper(), QColor(0x17, 0x20, 0x23), patience);
        applyLooks(false);
        QTRY_COMPARE_WITH_TIMEOUT(paper(), QColor(0xfb, 0xfa, 0xf6), patience);
    }

    void scrollBarsHandleGoesFromEndToEnd() {
        applyLooks(false);
        QScrollBar bar(Qt::Vertical);
        bar.setRange(0, 90);
        bar.setPageStep(10);
        bar.resize(bar.sizeHint().width(), 200);
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = Qt::Vertical;
        option.maximum = 90;
        option.pageStep = 10;
        const auto part = [&](int value, QStyle::SubControl control) {
            option.sliderPosition = option.sliderValue = value;
            return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, control, &bar);
        };
        QCOMPARE(part(0, QStyle::SC_ScrollBarSlider).top(), 0);
        QCOMPARE(part(90, QStyle::SC_ScrollBarSlider).bottom(), 199);
        QVERIFY(part(45, QStyle::SC_ScrollBarSlider).height() >= 32);
        QCOMPARE(part(45, QStyle::SC_ScrollBarSubPage).bottom() + 1,
                 part(45, QStyle::SC_ScrollBarSlider).top());
        QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(5, 190));
        QCOMPARE(bar.value(), 10);
    }
};

} // namespace wendmark

QTEST_MAIN(wendmark::LooksTest)

#include "LooksTest.moc"
