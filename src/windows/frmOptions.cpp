#include "windows/frmOptions.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/Palettes.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"
#include "ui_frmOptions.h"

#include <QKeyEvent>
#include <QLocale>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <vector>

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
    ui_->txtVCOMPILElocation->setToolTip(ToolTipOf(options.VCOMPILElocation));
    ui_->txtRunner->setText(options.RunProgram);
    ui_->cmbLook->setCurrentIndex(static_cast<int>(options.Colours));
    ShowLetterSizes(options.LetterSize);
    ui_->chkFriendlyScript->setChecked(options.FriendlyScript);
    ui_->txtMax->setText(QString::number(options.MaxRecent));
    ui_->txtMax->installEventFilter(this);
    // Shown for information only; OK still stores it.
    ui_->txtVCOMPILElocation->setEnabled(false);
    ui_->Label1->setEnabled(false);
    ui_->butVCOMPILEbrowse->setEnabled(false);

    connect(ui_->butVCOMPILEbrowse, &QPushButton::clicked, this, &frmOptions::butVCOMPILEbrowse_Click);
    connect(ui_->butRunnerBrowse, &QPushButton::clicked, this, &frmOptions::butRunnerBrowse_Click);
    connect(ui_->butMaxUp, &QToolButton::clicked, this, [this] { StepMax(1); });
    connect(ui_->butMaxDown, &QToolButton::clicked, this, [this] { StepMax(-1); });
    connect(ui_->butOK, &QPushButton::clicked, this, &frmOptions::butOK_Click);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtMax->setFocus();
    ui_->txtMax->selectAll();
    FitScreen(*this);
}

frmOptions::~frmOptions() = default;

/// The usual sizes, and the stored one if it is none of them.
void frmOptions::ShowLetterSizes(int stored) {
    std::vector<int> sizes = {90, 100, 110, 125, 150, 175, 200};
    if (std::find(sizes.begin(), sizes.end(), stored) == sizes.end())
        sizes.insert(std::lower_bound(sizes.begin(), sizes.end(), stored), stored);
    for (const int size : sizes)
        ui_->cmbLetters->addItem(
            size == 100 ? QStringLiteral("Like the desktop") : QStringLiteral("%1 %").arg(size), size);
    ui_->cmbLetters->setCurrentIndex(ui_->cmbLetters->findData(stored));
}

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

void frmOptions::butRunnerBrowse_Click() {
    const QString name =
        dialogs_.AskOpenFile(this, {.title = QStringLiteral("Find the program that runs games"),
                                    .defaultSuffix = {},
                                    .filter = QStringLiteral("All files|*"),
                                    .currentFile = ui_->txtRunner->text()});
    if (!name.isEmpty())
        ui_->txtRunner->setText(name);
}

void frmOptions::Refuse(QLineEdit& box, const QString& message) {
    dialogs_.ShowMessageBox(this, message, QLatin1String(DefaultTitle), QMessageBox::Ok,
                            QMessageBox::Warning);
    box.setFocus();
    box.selectAll();
}

std::optional<QString> frmOptions::RunProgram() {
    const QString before = settings_.CurrentOptions().RunProgram;
    const QString name = ui_->txtRunner->text().trimmed();
    // One that has gone since, with its disk perhaps, does not keep the author from the other options.
    if (name.isEmpty() || name == before)
        return name;
    const QString found = QStandardPaths::findExecutable(name); // It takes a full path, too.
    if (found.isEmpty())
        Refuse(
            *ui_->txtRunner,
            QStringLiteral("There is no program %1, or it is not marked as executable. Choose another one, "
                           "or leave the box empty to use the program that the desktop has for .kel files.")
                .arg(name));
    return found.isEmpty() ? std::nullopt : std::optional(found);
}

void frmOptions::butOK_Click() {
    const QString max = ui_->txtMax->text().trimmed();
    bool isNumeric = false;
    const double number = QLocale::c().toDouble(max, &isNumeric);
    if (!isNumeric || !std::isfinite(number)) {
        Refuse(*ui_->txtMax, QStringLiteral("Maximum number of files must be a number."));
        return;
    }
    Options options;
    options.VCOMPILElocation = ui_->txtVCOMPILElocation->text();
    options.FriendlyScript = ui_->chkFriendlyScript->checkState() == Qt::Checked;
    try {
        options.MaxRecent = LeadingNumber(max.toStdString());
    } catch (const KelError& error) {
        Refuse(*ui_->txtMax, QStringLiteral("Maximum number of files: %1.").arg(ToQt(error.Problem())));
        return;
    }
    const std::optional<QString> runProgram = RunProgram();
    if (!runProgram)
        return;
    options.RunProgram = *runProgram;
    options.Colours =
        static_cast<Look>(ui_->cmbLook->currentIndex()); // The rows of the box have the order of Look.
    options.LetterSize = static_cast<std::int16_t>(ui_->cmbLetters->currentData().toInt());
    settings_.StoreOptions(options);
    ApplyLook(options.Colours);
    ApplyLetterSize(options.LetterSize);
    const QString problem = settings_.NewProblem();
    if (!problem.isEmpty())
        dialogs_.ShowMessageBox(this, problem, QLatin1String(DefaultTitle), QMessageBox::Ok,
                                QMessageBox::Warning);
    accept();
}

} // namespace zem
