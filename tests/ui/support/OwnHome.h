#pragma once

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtGlobal>

namespace wendmark::test {

/// A home of its own for a test program that prints, or empties the documents folder: neither the documents
/// of whoever runs the tests nor those of another test are touched. Comes first in main().
class OwnHome final {
public:
    OwnHome() {
        // In test mode nothing but the home decides where documents are.
        if (!m_folder.isValid() || !qputenv("HOME", m_folder.path().toLocal8Bit()))
            qFatal("There is no home for the test");
        QStandardPaths::setTestModeEnabled(true);
        if (!QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).startsWith(m_folder.path()))
            qFatal("The documents are not in the home of the test");
    }

private:
    QTemporaryDir m_folder;
};

} // namespace wendmark::test
