#include "ui/dialogs/frmPropTab.h"

#include "base/Names.h"
#include "base/Numbers.h"
#include "commands/TourDocument.h"
#include "commands/TourProperties.h"
#include "model/TourModel.h"
#include "model/Workspace.h"
#include "platform/QtDesktop.h"
#include "platform/Strings.h"
#include "ui/Messages.h"
#include "ui/dialogs/DialogParts.h"
#include "ui/dialogs/FileChooser.h"
#include "ui/dialogs/LanguageBox.h"
#include "ui/dialogs/LastFolder.h"
#include "ui/dialogs/LayoutDiagram.h"
#include "ui/dialogs/Spinner.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

namespace wendmark {

namespace {

// Pixels; the layout that "Reset to Default Settings" puts into the fields.
constexpr int defaultNarHeight = 100;
constexpr int defaultAdvWidth = 110;
constexpr int defaultNavWidth = 94;

// Seconds.
constexpr int shortestCachePeriod = 10;
constexpr int longestCachePeriod = 1000;
constexpr int cachePeriodStep = 10;

constexpr QSize logoSize(320, 200); ///< Largest that a logo is shown.

QLabel* makeLabel(const char* name, const QString& text, QWidget* field) {
    auto* const label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setBuddy(field);
    return label;
}

QVBoxLayout* makePageLayout(QWidget& page) {
    auto* const layout = new QVBoxLayout(&page);
    layout->setContentsMargins(2 * dialogGap, 2 * dialogGap, 2 * dialogGap, 2 * dialogGap);
    layout->setSpacing(dialogGap);
    return layout;
}

template <typename Field>
Field* named(Field* field, const char* name) {
    field->setObjectName(QLatin1String(name));
    return field;
}

} // namespace

frmPropTab::frmPropTab(TourDocument& document, std::string logoFile, QtDesktop& desktop, QWidget* parent)
    : QDialog(parent)
    , m_document(document)
    , m_logoFile(std::move(logoFile))
    , m_desktop(desktop)
    , m_tabs(new QTabWidget(this)) {
    setObjectName(QStringLiteral("frmPropTab"));
    setWindowTitle(QStringLiteral("Wendmark - Tour Properties"));
    m_tabs->setObjectName(QStringLiteral("TabStrip1"));
    addTab(tr("General"), QStringLiteral("general"), makeGeneralPage());
    addTab(tr("Caching"), QStringLiteral("cache"), makeCachingPage());
    addTab(tr("Launching"), QStringLiteral("single"), makeLaunchingPage());
    addTab(tr("Layout"), QStringLiteral("layout"), makeLayoutPage());
    addTab(tr("Logo"), QStringLiteral("logo"), makeLogoPage());
    QDialogButtonBox* const buttons = makeOkCancelButtons(this);
    QVBoxLayout* const layout = makeDialogLayout(*this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(buttons);
    fillFromModel();
    m_tourTitle->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPropTab::takeOver);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::int16_t frmPropTab::currentTab() const {
    return static_cast<std::int16_t>(m_tabs->currentIndex() + 1);
}

QWidget* frmPropTab::makeGeneralPage() {
    auto* const page = new QWidget;
    m_tourTitle = named(new QLineEdit(page), "txtTourTitle");
    m_author = named(new QLineEdit(page), "txtAuthor");
    m_addInstructions =
        named(new QCheckBox(tr("Automatically add user &instructions after each narration text"), page),
              "chkAddInstructions");
    QVBoxLayout* const layout = makePageLayout(*page);
    layout->addWidget(makeLabel("lblTitle", tr("Tour &Title :"), m_tourTitle));
    layout->addWidget(m_tourTitle);
    layout->addWidget(makeLabel("Label7", tr("Tour &Author (optional):"), m_author));
    layout->addWidget(m_author);
    layout->addSpacing(dialogGap);
    layout->addWidget(m_addInstructions);
    m_language = makeLanguageBox(page);
    layout->addSpacing(dialogGap);
    layout->addWidget(makeLabel("lblLanguage", tr("Language of the tour's &buttons:"), m_language));
    layout->addWidget(m_language, 0, Qt::AlignLeft);
    layout->addStretch();
    return page;
}

QWidget* frmPropTab::makeCachingPage() {
    auto* const page = new QWidget;
    m_cachePeriod = named(new QLineEdit(page), "txtCachePeriod");
    m_cachePeriod->setAccessibleName(tr("Maximum time for loading each stop, in seconds"));
    m_cachePeriod->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
    auto* const spinner =
        named(new Spinner(*m_cachePeriod, shortestCachePeriod, longestCachePeriod, cachePeriodStep, page),
              "UpDown1");
    m_bufFlag = named(new QCheckBox(tr("Start Automatic &Loading when tour is started"), page), "chkBufFlag");
    QLabel* const label =
        makeTextLabel("Label1", tr("&Maximum time (in seconds) alloted for loading each stop :"), page);
    label->setBuddy(m_cachePeriod);
    auto* const period = new QHBoxLayout;
    period->setSpacing(0);
    period->addWidget(label, 1);
    period->addSpacing(dialogGap);
    period->addWidget(m_cachePeriod);
    period->addWidget(spinner);
    QVBoxLayout* const layout = makePageLayout(*page);
    layout->addLayout(period);
    layout->addSpacing(dialogGap);
    layout->addWidget(m_bufFlag);
    layout->addSpacing(dialogGap);
    layout->addWidget(
        makeTextLabel("Label6",
                      tr("(Note: Caching is disabled in author mode. Settings entered here will "
                         "apply in tour mode.)"),
                      page));
    layout->addStretch();
    return page;
}

QWidget* frmPropTab::makeLaunchingPage() {
    auto* const page = new QWidget;
    m_launchURL = named(new QLineEdit(page), "txtLaunchURL");
    QPushButton* const addButton = makeButton("btnAddLURL", tr("A&dd"), page);
    m_launchURLList = named(new QListWidget(page), "lstLaunchURLList");
    m_launchURLList->setAccessibleName(tr("Launching points"));
    m_launchURLList->setMinimumHeight(10 * dialogGap);
    QPushButton* const removeButton = makeButton("btnRemoveLURL", tr("&Remove"), page);
    auto* const grid = new QGridLayout;
    grid->setSpacing(dialogGap);
    grid->addWidget(makeLabel("Label2", tr("&URL of Launching point :"), m_launchURL), 0, 0);
    grid->addWidget(m_launchURL, 1, 0);
    grid->addWidget(addButton, 1, 1);
    grid->addWidget(makeLabel("Label3", tr("Tour will be launched &from :"), m_launchURLList), 2, 0);
    grid->addWidget(m_launchURLList, 3, 0);
    grid->addWidget(removeButton, 3, 1, Qt::AlignTop);
    QVBoxLayout* const layout = makePageLayout(*page);
    layout->addLayout(grid, 1);
    layout->addWidget(
        makeTextLabel("Label8",
                      tr("This information is necessary to return the user to the starting (launching) point "
                         "of the tour after the Exit button is clicked. A tour may be launched from multiple "
                         "locations. Enter a URL for each launching point for the tour."),
                      page));
    connect(addButton, &QPushButton::clicked, this, &frmPropTab::AddToListIfOK);
    connect(removeButton, &QPushButton::clicked, this, &frmPropTab::removeLaunchURL);
    connect(m_launchURLList, &QListWidget::itemClicked, this, &frmPropTab::showSelectedLaunchURL);
    connect(m_launchURLList, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            showSelectedLaunchURL();
    });
    return page;
}

QWidget* frmPropTab::makeLayoutPage() {
    auto* const page = new QWidget;
    m_layout = new LayoutDiagram(page);
    QPushButton* const resetButton = makeButton("btnResetLayout", tr("&Reset to Default Settings"), page);
    QVBoxLayout* const layout = makePageLayout(*page);
    layout->addStretch();
    layout->addWidget(m_layout, 0, Qt::AlignHCenter);
    layout->addSpacing(dialogGap);
    layout->addWidget(resetButton, 0, Qt::AlignHCenter);
    m_besidePage = named(new QCheckBox(tr("On wide screens, &words beside the page"), page), "chkBesidePage");
    layout->addSpacing(dialogGap);
    layout->addWidget(m_besidePage, 0, Qt::AlignHCenter);
    layout->addStretch();
    connect(resetButton, &QPushButton::clicked, this, &frmPropTab::resetLayout);
    const TourModel& model = m_document.model();
    connect(&m_layout->narHeight(), &QLineEdit::textChanged, this,
            [this, &model] { keepNumeric(m_layout->narHeight(), model.narHeight); });
    connect(&m_layout->advWidth(), &QLineEdit::textChanged, this,
            [this, &model] { keepNumeric(m_layout->advWidth(), model.advWidth); });
    connect(&m_layout->navWidth(), &QLineEdit::textChanged, this,
            [this, &model] { keepNumeric(m_layout->navWidth(), model.navWidth); });
    return page;
}

QWidget* frmPropTab::makeLogoPage() {
    auto* const page = new QWidget;
    m_picture = named(new QLabel(page), "Picture1");
    m_picture->setAccessibleName(tr("Logo"));
    m_picture->setFrameShape(QFrame::StyledPanel);
    m_picture->setAlignment(Qt::AlignCenter);
    m_picture->setMinimumSize(logoSize + QSize(2 * dialogGap, 2 * dialogGap));
    QPushButton* const browseButton = makeButton("btnAdvBrowse", tr("&Select New Logo"), page);
    QPushButton* const resetButton = makeButton("btnGraphReset", tr("&Reset to Default Settings"), page);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(browseButton);
    buttons->addWidget(resetButton);
    buttons->addStretch();
    QVBoxLayout* const layout = makePageLayout(*page);
    layout->addWidget(m_picture, 1);
    layout->addLayout(buttons);
    const QString defaultLogo = toQString(m_document.workspace().templateFile("fr-logo.gif"));
    showLogo(defaultLogo);
    connect(browseButton, &QPushButton::clicked, this, &frmPropTab::chooseLogo);
    connect(resetButton, &QPushButton::clicked, this, [this, defaultLogo] { setLogo(defaultLogo); });
    return page;
}

void frmPropTab::addTab(const QString& caption, const QString& key, QWidget* page) {
    const int index = m_tabs->addTab(page, caption);
    page->setObjectName(QStringLiteral("Frame%1").arg(index));
    m_tabs->tabBar()->setTabData(index, key);
}

void frmPropTab::fillFromModel() {
    const TourModel& model = m_document.model();
    m_tourTitle->setText(beginningOf(model.tourTitle, m_tourTitle->maxLength()));
    m_author->setText(beginningOf(model.tourAuthor, m_author->maxLength()));
    // Whatever the tour has: the author who does not want them says so each time.
    m_addInstructions->setChecked(true);
    m_cachePeriod->setText(QString::number(model.bufferDelay));
    m_bufFlag->setChecked(model.autoBuffer);
    m_layout->narHeight().setText(QString::number(model.narHeight));
    m_layout->advWidth().setText(QString::number(model.advWidth));
    m_layout->navWidth().setText(QString::number(model.navWidth));
    chooseLanguage(*m_language, toQString(model.language));
    m_besidePage->setChecked(model.wordsBesidePage);
    for (std::int16_t i = 0; i < model.launchURLCount; ++i)
        m_launchURLList->addItem(toQString(model.launchURL.at(static_cast<std::size_t>(i))));
}

void frmPropTab::AddToListIfOK() {
    const std::string typed = toUtf8(m_launchURL->text());
    const QString address = toQString(trimBlanks(typed));
    if (address.isEmpty()) {
        refuseText(tr("URL cannot be blank"));
        return;
    }
    if (!m_launchURLList->findItems(address, Qt::MatchExactly | Qt::MatchCaseSensitive).isEmpty()) {
        refuseText(tr("URL already listed"));
        return;
    }
    if (m_launchURLList->count() >= tourCapacity) {
        m_desktop.beep();
        return;
    }
    m_launchURLList->addItem(address);
}

void frmPropTab::removeLaunchURL() {
    const QList<QListWidgetItem*> selected = m_launchURLList->selectedItems();
    if (selected.isEmpty())
        m_desktop.beep();
    qDeleteAll(selected);
}

void frmPropTab::showSelectedLaunchURL() {
    const QListWidgetItem* const item = m_launchURLList->currentItem();
    if (item == nullptr)
        m_desktop.beep();
    else
        m_launchURL->setText(item->text());
}

void frmPropTab::refuseText(const QString& message) {
    m_desktop.beep();
    showMessage(this, message);
    m_launchURL->setFocus();
}

void frmPropTab::keepNumeric(QLineEdit& field, const std::int16_t& current) {
    if (isNumeric(toUtf8(field.text())))
        return;
    m_desktop.beep();
    field.setText(QString::number(current));
}

void frmPropTab::resetLayout() {
    m_layout->narHeight().setText(QString::number(defaultNarHeight));
    m_layout->advWidth().setText(QString::number(defaultAdvWidth));
    m_layout->navWidth().setText(QString::number(defaultNavWidth));
}

void frmPropTab::chooseLogo() {
    const QString file =
        chooseFile(this, tr("Select Logo File"), QStringLiteral("*.jpg;*.gif (*.jpg *.JPG *.gif *.GIF)"), {},
                   m_logoFolder == nullptr ? QString() : m_logoFolder->folder());
    if (file.isEmpty())
        return;
    if (m_logoFolder != nullptr)
        m_logoFolder->remember(file);
    setLogo(file);
}

void frmPropTab::setLogo(const QString& file) {
    m_logoFile = toUtf8(file);
    showLogo(file);
}

void frmPropTab::showLogo(const QString& file) {
    QImageReader reader(file);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (size.width() > logoSize.width() || size.height() > logoSize.height())
        reader.setScaledSize(size.scaled(logoSize, Qt::KeepAspectRatio));
    const QPixmap picture = QPixmap::fromImageReader(&reader);
    if (!picture.isNull())
        m_picture->setPixmap(picture);
}

void frmPropTab::takeOver() {
    TourProperties properties;
    properties.tourTitle = wholeText(*m_tourTitle, m_document.model().tourTitle);
    properties.tourAuthor = wholeText(*m_author, m_document.model().tourAuthor);
    properties.autoInstruction = m_addInstructions->isChecked();
    properties.cachePeriod = toUtf8(m_cachePeriod->text());
    properties.autoBuffer = m_bufFlag->isChecked();
    for (int i = 0; i < m_launchURLList->count(); ++i)
        properties.launchURLs.push_back(toUtf8(m_launchURLList->item(i)->text()));
    properties.narHeight = toUtf8(m_layout->narHeight().text());
    properties.advWidth = toUtf8(m_layout->advWidth().text());
    properties.navWidth = toUtf8(m_layout->navWidth().text());
    properties.language = toUtf8(m_language->currentData().toString());
    properties.wordsBesidePage = m_besidePage->isChecked();
    properties.logoFile = m_logoFile;
    m_document.setProperties(properties,
                             [this] { showMessage(this, tr("Layout dimensions must be numeric")); });
    accept();
}

} // namespace wendmark
