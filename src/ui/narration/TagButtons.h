#pragma once

#include "model/StopTexts.h"
#include "ui/ProgramParts.h"

#include <QWidget>
#include <string>

class QKeySequence;
class QPushButton;

namespace wendmark {

class FlowLayout;
class HtmlField;

/// The buttons that put tags, line breaks, links and images into a narration. Their keys work on the field
/// that has the focus, in the whole window.
class TagButtons final : public QWidget {
    Q_OBJECT

public:
    /// What `parts` refers to, and the field, must outlive the buttons.
    TagButtons(ProgramParts parts, HtmlField& field, QWidget* parent);

private:
    QPushButton* add(const char* name, const QString& caption, const QString& toolTip,
                     const QKeySequence& key);
    void addTag(const char* name, const QString& caption, const QString& toolTip, const QKeySequence& key,
                const Tag& tag);
    void wrap(const Tag& tag);
    void wrapWhereTheFocusIs(const Tag& tag);
    void breakLine();
    void addLink();
    void addImage();
    void copyImage(const QString& path, const std::string& name);
    void takeOver(const EditedText& edited);

    ProgramParts m_parts;
    HtmlField& m_field;
    FlowLayout* m_row;
};

} // namespace wendmark
