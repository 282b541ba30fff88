#include "ui/dialogs/frmPrint.h"

#include "base/Log.h"
#include "base/Numbers.h"
#include "base/Utf8.h"
#include "commands/TourDocument.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/Printing.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/printing/PrintedText.h"
#include "ui/printing/TourPrinter.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

namespace {

const QString firstStop = QStringLiteral("1");

template <typename Control>
Control* named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

/// Of texts that nobody wrote by hand no more than is laid out: the sheets hold each title many times.
TourModel printable(const TourModel& model) {
    TourModel printed = model;
    const auto cut = [](std::string& text) { text.resize(skipUtf16(text, 0, mostLaidOut + 1)); };
    cut(printed.tourTitle);
    std::for_each(printed.launchURL.begin(), printed.launchURL.end(), cut);
    for (Stop& stop : printed.stops) {
        for (std::string* const text :
             {&stop.stopTitle, &stop.stopURL, &stop.stopNarration, &stop.stopInstruction})
            cut(*text);
    }
    return printed;
}

std::int32_t numberIn(const QLineEdit& field) {
    return roundTo32Bits(leadingNumber(toUtf8(field.text()))).value_or(0);
}

} // namespace

frmPrint::frmPrint(const TourDocument& document, std::string logoFile, QtDesktop& desktop, QWidget* parent)
    : QDialog(parent)
    , m_document(document)
    , m_logoFile(std::move(logoFile))
    , m_desktop(desktop)
    , m_allStops(named(new QRadioButton(tr("&All Stops"), this), "optAllStops"))
    , m_selectedStops(named(new QRadioButton(tr("&Selected Stops"), this), "optSelStops"))
    , m_from(named(new QLineEdit(this), "txtFrom"))
    , m_to(named(new QLineEdit(this), "txtTo"))
    , m_image(named(new QCheckBox(tr("Stop &Image"), this), "chkImage"))
    , m_properties(named(new QCheckBox(tr("Tour &Properties"), this), "chkProp")) {
    setObjectName(QStringLiteral("frmPrint"));
    setWindowTitle(QStringLiteral("Wendmark - Print"));
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(makeRange());
    layout->addWidget(makeIncluded());
    layout->addStretch();
    QDialogButtonBox* const buttons = makeOkCancelButtons(this);
    layout->addWidget(buttons);
    setMinimumWidth(40 * dialogGap);
    m_allStops->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPrint::print);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QWidget* frmPrint::makeRange() {
    auto* const group = named(new QGroupBox(tr("Print Range"), this), "Frame2");
    m_allStops->setChecked(true);
    m_from->setAccessibleName(tr("First stop"));
    m_to->setAccessibleName(tr("Last stop"));
    auto* const toLabel = named(new QLabel(tr("to"), group), "Label1");
    auto* const row = new QHBoxLayout;
    row->setSpacing(dialogGap);
    row->addWidget(m_selectedStops);
    row->addWidget(m_from);
    row->addWidget(toLabel);
    row->addWidget(m_to);
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(m_allStops);
    layout->addLayout(row);
    selectStops(false);
    connect(m_selectedStops, &QRadioButton::toggled, this, &frmPrint::selectStops);
    connect(m_from, &QLineEdit::textChanged, this, [this] { correct(*m_from, firstStop); });
    connect(m_to, &QLineEdit::textChanged, this,
            [this] { correct(*m_to, QString::number(m_document.model().stopCount())); });
    return group;
}

QWidget* frmPrint::makeIncluded() {
    auto* const group = named(new QGroupBox(tr("Include"), this), "Frame1");
    m_image->setChecked(true);
    m_properties->setChecked(true);
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(m_image);
    layout->addWidget(m_properties);
    return group;
}

void frmPrint::selectStops(bool selected) {
    m_from->setEnabled(selected);
    m_to->setEnabled(selected);
    if (selected) {
        m_from->setText(firstStop);
        m_to->setText(QString::number(m_document.model().stopCount()));
    }
}

void frmPrint::correct(QLineEdit& field, const QString& otherwise) {
    if (isNumeric(toUtf8(field.text())))
        return;
    m_desktop.beep();
    field.setText(otherwise);
}

StopRange frmPrint::wantedRange() const {
    if (m_allStops->isChecked())
        return {1, m_document.model().stopCount()};
    return {numberIn(*m_from), numberIn(*m_to)};
}

void frmPrint::print() {
    const TourModel model = printable(m_document.model());
    const PrintedTour printed = composePrintedTour(model, wantedRange(), m_properties->isChecked(),
                                                   m_document.shownTourPath(), m_logoFile);
    accept();
    const std::unique_ptr<QPrinter> printer = makeDefaultPrinter(toQString(model.tourTitle));
    const QString pictureFolder = toQString(m_document.workspace().folders().newTourPath);
    if (!printTour(*printer, printed, pictureFolder, [this] { m_desktop.stayResponsive(); }))
        m_document.log().fail("cannot print the tour");
    else if (!printer->outputFileName().isEmpty())
        emit printedToFile(printer->outputFileName());
}

} // namespace wendmark
