#include "help/frmHelp.h"

#include "ui_frmHelp.h"

namespace zem {

frmHelp::frmHelp(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmHelp>()) {
    ui_->setupUi(this);
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::close);
}

frmHelp::~frmHelp() = default;

void frmHelp::ShowSection(const std::vector<HelpSection>& sections, const QString& section) {
    bool found = false;
    for (const HelpSection& candidate : sections) {
        if (candidate.name != section)
            continue;
        ui_->txtHelp->setPlainText(candidate.text);
        found = true;
    }
    if (!found)
        ui_->txtHelp->setPlainText(QStringLiteral("Could not find help section '%1'\r\nPlease report this "
                                                  "problem to zem-support@example.org.")
                                       .arg(section));
}

void ShowHelp(const QString& section, QWidget* parent) {
    auto* help = new frmHelp(parent);
    help->setAttribute(Qt::WA_DeleteOnClose);
    help->ShowSection({}, section);
    help->show();
}

} // namespace zem
