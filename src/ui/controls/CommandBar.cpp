#include "ui/controls/CommandBar.h"

#include "ui/controls/CommandButton.h"
#include "ui/controls/FlowLayout.h"

#include <QHBoxLayout>

namespace wendmark {

namespace {

constexpr int gap = 2;
constexpr int groupGap = 8;

} // namespace

CommandBar::CommandBar(QWidget* parent) : QWidget(parent), m_layout(new FlowLayout(gap)) {
    m_layout->setContentsMargins(groupGap / 2, gap, groupGap / 2, gap);
    setLayout(m_layout);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void CommandBar::addButton(const QString& key, const QString& toolTip, const QAction& action) {
    auto* const button = new CommandButton(toolTip, action, this);
    button->setObjectName(key);
    connect(button, &QToolButton::clicked, this, [this, key] { emit buttonClicked(key); });
    m_layout->addWidget(button);
}

void CommandBar::showText(const QString& key) {
    auto& button = *findChild<CommandButton*>(key);
    button.showText(button.toolTip());
}

void CommandBar::addPlaceholder(const QString& key, QWidget* control) {
    auto* const place = new QWidget(this);
    place->setObjectName(key + QStringLiteral("Placeholder"));
    control->setParent(place);
    control->adjustSize();
    auto* const layout = new QHBoxLayout(place);
    layout->setContentsMargins(groupGap / 2, 0, groupGap / 2, 0);
    layout->addWidget(control);
    m_layout->addWidget(place);
}

void CommandBar::addGap() {
    auto* const space = new QWidget(this);
    space->setFixedSize(groupGap, 1);
    m_layout->addWidget(space);
}

} // namespace wendmark
