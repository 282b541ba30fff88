#include "base/Files.h"
#include "platform/BrowserView.h"
#include "recovery/RecoveryRecord.h"
#include "reliability/Report.h"
#include "ui/main/frmMain.h"
#include "ui/narration/HtmlField.h"
#include "ui/narration/frmNarEdit.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <cstdlib>
#include <random>

namespace wendmark {

namespace {

using test::report;
using test::UiFixture;

/// Works on a tour with random commands until it is killed, and reports every state that it has brought
/// about.
class Author final {
public:
    explicit Author(unsigned seed) : m_random(seed), m_window(m_program.parts()) {
        const QString tour = m_program.makeTour(QStringLiteral("walk"), 3);
        m_window.load(tour);
        m_window.show();
        reportState('C');
        auto& look = m_program.recovery.unappliedTexts;
        look = [windows = look] {
            report('L', "");
            return windows();
        };
    }

    [[noreturn]] void work() {
        for (;;) {
            report('B', "");
            const bool saved = runCommand();
            reportState(saved ? 'C' : 'S');
            QTest::qWait(pick(30));
        }
    }

private:
    int pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    frmNarEdit* editor() const { return m_window.findChild<frmNarEdit*>(); }

    void reportState(char kind) const {
        std::optional<UnappliedTexts> texts;
        if (editor() != nullptr)
            texts = editor()->unappliedTexts();
        report(kind, test::stateOf({0, m_program.workspace.tourPath(), m_program.model, texts}));
    }

    /// True when the tour is saved as it is now.
    bool runCommand() {
        TourModel& model = m_program.model;
        switch (pick(12)) {
        case 0:
        case 1:
            if (model.stopCount() < 20)
                m_window.insertStop();
            return false;
        case 2:
            if (model.currentStop > 0 && model.stopCount() > 1)
                m_window.deleteStop();
            return false;
        case 3:
            m_window.moveForward();
            return false;
        case 4:
            m_window.next();
            return false;
        case 5:
            m_window.previous();
            return false;
        case 6:
            model.tourAuthor = std::to_string(m_random());
            return false;
        case 7:
            return writeFile();
        case 8:
        case 9:
            type();
            return false;
        default:
            m_window.save();
            return editor() == nullptr || !editor()->unappliedTexts();
        }
    }

    bool writeFile() {
        const std::string name = "own" + std::to_string(pick(3)) + ".htm";
        test::writeFile(m_program.workspace.workingFile(name), std::to_string(m_random()));
        return false;
    }

    void type() {
        if (m_program.model.currentStop < 1)
            return;
        if (editor() == nullptr || !editor()->isVisible())
            m_window.editNarrationFrame();
        auto* const field = editor()->findChild<HtmlField*>(QStringLiteral("txtText"));
        for (int keys = 5 + pick(40); keys > 0; --keys) {
            QTest::keyClick(field, static_cast<char>('a' + pick(26)));
            reportState('S');
            QTest::qWait(pick(25));
        }
        report('B', "");
        if (pick(3) == 0)
            editor()->findChild<QPushButton*>(QStringLiteral("btnOK"))->click();
        else if (pick(3) == 0)
            editor()->reject();
    }

    std::minstd_rand m_random;
    UiFixture m_program;
    frmMain m_window;
};

} // namespace

} // namespace wendmark

/// Its only argument is the seed of the random choices.
int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::Author(argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 1U).work();
}
