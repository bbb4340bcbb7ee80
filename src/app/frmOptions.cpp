#include "app/frmOptions.h"

#include "forms/QtText.h"
#include "model/LineText.h"
#include "ui_frmOptions.h"

#include <QKeyEvent>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace zem {

frmOptions::frmOptions(Settings& settings, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmOptions>()),
      settings_(settings),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    const Options& options = settings.CurrentOptions();
    ui_->txtVCOMPILElocation->setText(options.VCOMPILElocation);
    ui_->txtVCOMPILElocation->setCursorPosition(0);
    ui_->txtVCOMPILElocation->setToolTip(options.VCOMPILElocation);
    ui_->chkFriendlyScript->setChecked(options.FriendlyScript);
    ui_->txtMax->setText(QString::number(options.MaxRecent));
    ui_->txtMax->installEventFilter(this);
    // Shown for information only; OK still stores it.
    ui_->txtVCOMPILElocation->setEnabled(false);
    ui_->Label1->setEnabled(false);
    ui_->butVCOMPILEbrowse->setEnabled(false);

    connect(ui_->butVCOMPILEbrowse, &QPushButton::clicked, this, &frmOptions::butVCOMPILEbrowse_Click);
    connect(ui_->butMaxUp, &QToolButton::clicked, this, [this] { StepMax(1); });
    connect(ui_->butMaxDown, &QToolButton::clicked, this, [this] { StepMax(-1); });
    connect(ui_->butOK, &QPushButton::clicked, this, &frmOptions::butOK_Click);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtMax->setFocus();
    ui_->txtMax->selectAll();
}

frmOptions::~frmOptions() = default;

/// The arrow keys in the number box do what the arrows beside it do.
bool frmOptions::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            StepMax(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmOptions::StepMax(int by) {
    const int now = ui_->txtMax->text().toInt(); // 0 for anything else
    ui_->txtMax->setText(QString::number(std::clamp(now + by, 0, 32767)));
}

void frmOptions::butVCOMPILEbrowse_Click() {
    const QString name =
        dialogs_.AskOpenFile(this, {QStringLiteral("Find VCOMPILE.EXE"), QStringLiteral("exe"),
                                    QStringLiteral("Applications|*.exe")});
    if (!name.isEmpty())
        ui_->txtVCOMPILElocation->setText(name);
}

void frmOptions::RefuseMax(const QString& message) {
    dialogs_.ShowMessageBox(this, message, QLatin1String(DefaultTitle), QMessageBox::Ok,
                            QMessageBox::Warning);
    ui_->txtMax->setFocus();
    ui_->txtMax->selectAll();
}

void frmOptions::butOK_Click() {
    const QString max = ui_->txtMax->text().trimmed();
    bool isNumeric = false;
    const double number = QLocale::c().toDouble(max, &isNumeric);
    if (!isNumeric || !std::isfinite(number)) {
        RefuseMax(QStringLiteral("Maximum number of files must be a number."));
        return;
    }
    Options options;
    options.VCOMPILElocation = ui_->txtVCOMPILElocation->text();
    options.FriendlyScript = ui_->chkFriendlyScript->checkState() == Qt::Checked;
    try {
        options.MaxRecent = LeadingNumber(max.toStdString());
    } catch (const KelError& error) {
        RefuseMax(QStringLiteral("Maximum number of files: %1.").arg(ToQt(error.Problem())));
        return;
    }
    settings_.StoreOptions(options);
    accept();
}

} // namespace zem
