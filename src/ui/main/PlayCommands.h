#pragma once

#include "commands/DocumentListener.h"
#include "serve/TourServer.h"

#include <QObject>
#include <functional>

class QUrl;
class QWidget;

namespace wendmark {

class FileCommands;
class TourDocument;
struct ProgramParts;

/// Plays the saved tour in the author's browser, and shows its folder. What is not saved is asked about. Each
/// command goes through the gate. The tour is served until another one is open, or the program ends.
class PlayCommands final : public QObject, private DocumentListener {
    Q_OBJECT

public:
    /// All must outlive it; dialogs stand over `window`.
    PlayCommands(const ProgramParts& parts, FileCommands& files, QWidget& window);
    ~PlayCommands() override;

    void playServed();
    void playFromDisk();
    void openTourFolder();

private:
    void run(std::function<void()> command);
    void serveAndOpen();
    bool hasSavedFolder(const QString& save);
    bool mayPlay();
    QString pathOf(const char* name) const;
    void open(const QUrl& address);

    void tourChangedNow() override;
    void tourSaved(bool complete) override;

    const ProgramParts& m_parts;
    TourDocument& m_document;
    FileCommands& m_files;
    QWidget& m_window;
    TourServer m_server;
};

} // namespace wendmark
