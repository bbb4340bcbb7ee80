#pragma once

#include <QDialog>
#include <QString>

#include <memory>
#include <vector>

namespace Ui {
class frmHelp;
}

namespace zem {

/// A piece of help, found by its name.
struct HelpSection {
    QString name;
    QString text;
};

/// The help window.
class frmHelp : public QDialog {
    Q_OBJECT

public:
    explicit frmHelp(QWidget* parent = nullptr);
    ~frmHelp() override;

    /// Shows the text of the section of exactly that name, the last one if there are several, or says that
    /// there is none.
    void ShowSection(const std::vector<HelpSection>& sections, const QString& section);

private:
    std::unique_ptr<Ui::frmHelp> ui_;
};

/// Shows a section in a help window of its own. No help sections ship with the program, so it says so.
void ShowHelp(const QString& section, QWidget* parent);

} // namespace zem
