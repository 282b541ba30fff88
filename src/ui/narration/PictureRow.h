#pragma once

#include "model/PictureTag.h"

#include <QList>
#include <QWidget>
#include <optional>
#include <string>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace wendmark {

class HtmlField;
class TourDocument;

/// What a picture says to visitors who do not see it, and how wide it is shown: a row for the picture whose
/// tag the caret of a field is in, hidden while it is in none. What is changed is changed in the tag.
class PictureRow final : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive the row; the document has the pictures' files.
    PictureRow(const TourDocument& document, HtmlField& field, QWidget* parent);

signals:
    /// The row has come or gone.
    void shownChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setupParts();
    QWidget* makeGroup(const QList<QWidget*>& parts);
    void follow();
    void ask();
    void show(const PictureTag& picture);
    void tellWidth(const PictureTag& picture);
    void describe();
    void resizePicture();
    void replaceTag(const std::string& tag, const QWidget& source);

    const TourDocument& m_document;
    HtmlField& m_field;
    std::optional<PictureTag> m_picture;
    const QWidget* m_source = nullptr; ///< What the tag was changed from last, and the field's revision then.
    int m_revision = 0;
    int m_fitting = 0;       ///< Pixels; 0 when the picture's own width fits, or is not known.
    QLineEdit* m_text;       ///< txtPictureDescription
    QCheckBox* m_decoration; ///< chkDecoration: visitors are told nothing of the picture.
    QSpinBox* m_width;       ///< spnPictureWidth, 0: as wide as the picture is
    QPushButton* m_fit;      ///< btnFitPicture
};

} // namespace wendmark
