#pragma once

#include <QDialog>

namespace wendmark {

class Registry;

/// The program's name and version, and a way to the system's own information tool.
class frmAbout final : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(const Registry& registry, QWidget* parent = nullptr);

private:
    void showSystemInformation();

    const Registry& m_registry;
};

} // namespace wendmark
