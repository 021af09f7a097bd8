#pragma once

#include "kovakit-qt/modality/sheet-fit_p.h"
#include "kovakit-qt/modality/sheet-modality_p.h"

#include <kovakit-qt/widgets/kova-msg-sheet.h>

class MessageLabel;
class QDialogButtonBox;
class QLabel;

// Builds and lays out the widgets of a message sheet.
class KovaMessageSheetPrivate : public QObject
{
public:
    explicit KovaMessageSheetPrivate(KovaMessageSheet *sheet);

    void initialize(const MsgBoxCustomBtnText &buttonText = {});
    void setText(const QString &text);
    void setInformativeText(const QString &text);
    void setMovie(const QString &movieFile);
    void setIcon(const QPixmap &pixmap);
    void setIcon(QMessageBox::Icon icon);
    void setupLayout();
    [[nodiscard]] int getPreferredWidth() const;

    void startMovie();
    void stopMovie();
    void setFocusPolicies();

    KovaMessageSheet *q;
    MessageLabel *textLabel;
    MessageLabel *informativeLabel = nullptr;
    QLabel *iconLabel;
    int messageType = KovaMessageSheet::Processing;
    QDialogButtonBox *buttonBox;
    SheetModality modality;
    SheetFit fit;

private:
    void setupIcon();
    void setupButtons(const MsgBoxCustomBtnText &buttonText);
    void setCompact(bool compact);
    [[nodiscard]] bool hasIcon() const;
    void setupTextLabel(MessageLabel *label, const char *styleKey);
};
