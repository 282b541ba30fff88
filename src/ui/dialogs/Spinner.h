#pragma once

#include <QWidget>

class QLineEdit;

namespace wendmark {

/// Two small buttons beside a field that step the number in it up and down. The field itself takes any text;
/// a step begins at the number with which the text begins and ends inside the range.
class Spinner final : public QWidget {
    Q_OBJECT

public:
    /// The field's Up and Down keys step, too. The spinner must not outlive the field.
    Spinner(QLineEdit& field, int smallest, int largest, int step, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeButton(const char* name, Qt::ArrowType arrow, const QString& meaning, int step);
    void stepBy(int step);

    QLineEdit& m_field;
    int m_smallest;
    int m_largest;
    int m_step;
};

} // namespace wendmark
