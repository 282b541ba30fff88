#pragma once

#include <QDialog>

class QVBoxLayout;

namespace wendmark {

class Registry;

/// The program's name and version, and a way to the system's own information tool.
class frmAbout final : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(const Registry& registry, QWidget* parent = nullptr);

private:
    /// Title, version, description and disclaimer, one below the other.
    QVBoxLayout* makeTexts();
    void showSystemInformation();

    const Registry& m_registry;
};

} // namespace wendmark
