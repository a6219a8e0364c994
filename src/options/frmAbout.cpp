#include "options/frmAbout.h"

#include "options/about.h"
#include "widgets/keyed_push_button.h"
#include "widgets/quiet_label.h"
#include "widgets/theme.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvrane {

namespace {

constexpr int iconSize = 96;

QString T(const char* text) {
    return QString::fromLatin1(text);
}

QLabel* centred(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    return label;
}

QLabel* createName(QWidget* parent) {
    QLabel* name = centred(T("Kelvrane"), parent);
    QFont large = name->font();
    large.setPointSizeF(large.pointSizeF() * 2);
    large.setWeight(QFont::DemiBold);
    name->setFont(large);
    return name;
}

/// The address as a link, readable in light and dark.
class AddressLink final : public QLabel {
  public:
    AddressLink(const QString& address, QWidget* parent) : QLabel(parent), m_address(address) {
        setObjectName(T("lblURL"));
        setAlignment(Qt::AlignCenter);
        setTextFormat(Qt::RichText);
        setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        connect(this, &QLabel::linkActivated, this, [] { AboutControls().click(T("lblURL")); });
        tint();
    }

  protected:
    void changeEvent(QEvent* event) override {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            tint();
    }

  private:
    /// The text holds its colour.
    void tint() {
        setText(T("<a href=\"%1\" style=\"color:%2\">%1</a>")
                    .arg(m_address.toHtmlEscaped(),
                         theme::ValueColor(TextRole::Value, palette()).name()));
    }

    QString m_address;
};

} // namespace

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(T("frmAbout"));
    setWindowTitle(T("About Kelvrane"));
    LoadAbout();
    auto* icon = centred({}, this);
    icon->setPixmap(theme::AppIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatio()));
    QLabel* lblVersion = centred(AboutControls().item(T("lblVersion")).caption, this);
    lblVersion->setObjectName(T("lblVersion"));
    lblVersion->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QPushButton* cmdOK = CreatePushButton(&AboutControls(), T("cmdOK"), this);
    cmdOK->setDefault(true);
    cmdOK->setFocus();

    auto* content = new QVBoxLayout(this);
    content->setContentsMargins(theme::Gap, theme::Gap, theme::Gap, theme::Margin);
    content->setSpacing(theme::Step);
    auto* heading = new QuietLabel(T("Brindlemoor-Ware Presents"), this);
    heading->setAlignment(Qt::AlignCenter);
    content->addWidget(heading);
    content->addSpacing(theme::Step);
    content->addWidget(icon);
    content->addWidget(createName(this));
    content->addWidget(lblVersion);
    if (AboutControls().item(T("lblURL")).visible) {
        content->addSpacing(theme::Step);
        QLabel* lblMoreInfo = centred(AboutControls().item(T("lblMoreInfo")).caption, this);
        lblMoreInfo->setObjectName(T("lblMoreInfo"));
        content->addWidget(lblMoreInfo);
        content->addWidget(new AddressLink(AboutControls().value(T("lblURL")), this));
    }
    content->addSpacing(theme::Gap);
    content->addWidget(cmdOK, 0, Qt::AlignHCenter);
    content->setSizeConstraint(QLayout::SetFixedSize);
}

void frmAbout::reject() {
    AboutControls().click(T("cmdOK"));
}

} // namespace kelvrane
