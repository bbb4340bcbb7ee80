#include "windows/frmAbout.h"

#include "forms/Icons.h"
#include "model/GameModel.h"
#include "ui_frmAbout.h"

namespace zem {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmAbout>()) {
    ui_->setupUi(this);
    ui_->Picture1->setPixmap(ThemedIcon(QStringLiteral("zem")).pixmap(48));
    ui_->lblAbout->setText(
        tr("%1\n\nAn editor for text-adventure games in the Kel script language. Games are played with "
           "Veldt.\n\nFree software under the MIT licence. Icons: Lucide, ISC and MIT licences.")
            .arg(QLatin1String(NameAndVersion)));
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
}

frmAbout::~frmAbout() = default;

} // namespace zem
