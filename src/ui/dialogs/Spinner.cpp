#include "ui/dialogs/Spinner.h"

#include "base/Numbers.h"
#include "platform/Strings.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace wendmark {

Spinner::Spinner(QLineEdit& field, int smallest, int largest, int step, QWidget* parent)
    : QWidget(parent), m_field(field), m_smallest(smallest), m_largest(largest), m_step(step) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(makeButton("Up", Qt::UpArrow, tr("More"), step));
    layout->addWidget(makeButton("Down", Qt::DownArrow, tr("Less"), -step));
    setFixedHeight(field.sizeHint().height());
    m_field.installEventFilter(this);
}

bool Spinner::eventFilter(QObject* watched, QEvent* event) {
    const auto* const press = dynamic_cast<QKeyEvent*>(event);
    if (watched == &m_field && press != nullptr && event->type() == QEvent::KeyPress) {
        const int key = press->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            stepBy(key == Qt::Key_Up ? m_step : -m_step);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

QWidget* Spinner::makeButton(const char* name, Qt::ArrowType arrow, const QString& meaning, int step) {
    auto* const button = new QToolButton(this);
    button->setObjectName(QLatin1String(name));
    button->setArrowType(arrow);
    button->setToolTip(meaning);
    button->setAccessibleName(meaning);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus); // The field's own keys do the same.
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(button, &QToolButton::clicked, this, [this, step] { stepBy(step); });
    return button;
}

void Spinner::stepBy(int step) {
    const double typed = leadingNumber(toUtf8(m_field.text()));
    const double stepped = std::clamp<double>(typed + step, m_smallest, m_largest);
    m_field.setText(QString::number(roundTo32Bits(stepped).value_or(m_smallest)));
    m_field.selectAll();
}

} // namespace wendmark
