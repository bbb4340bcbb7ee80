#include "panels/ChangesPanel.h"

#include "panels/DifferenceView.h"
#include "session/GameSession.h"
#include "session/ReadVersionFile.h"

#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace zem {

ChangesPanel::ChangesPanel(GameSession& session, const Versions& versions,
                           std::function<void(const Place&)> open, QWidget* parent)
    : QDockWidget(QStringLiteral("Changes"), parent),
      session_(session),
      versions_(versions),
      cmbVersion_(new QComboBox(this)),
      view_(new DifferenceView(this)) {
    setObjectName(QStringLiteral("dckChanges"));
    setProperty("isTabbed", true);
    cmbVersion_->setObjectName(QStringLiteral("cmbSince"));
    cmbVersion_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    auto* row = new QFormLayout;
    row->addRow(QStringLiteral("Changed &since"), cmbVersion_);
    cmbVersion_->setAccessibleName(QStringLiteral("Changed since"));
    cmbVersion_->setAccessibleDescription(
        cmbVersion_->accessibleName()); // a box is read out as what it shows
    column->addLayout(row);
    column->addWidget(view_, 1);
    setWidget(content);
    connect(view_, &DifferenceView::Chosen, this, std::move(open));
    connect(cmbVersion_, &QComboBox::currentIndexChanged, this, &ChangesPanel::Compare);
    const auto renew = [this] {
        OfferVersions();
        Compare();
    };
    connect(&session_, &GameSession::Changed, this, &ChangesPanel::Compare);
    connect(&session_, &GameSession::Replaced, this, renew);
    connect(&session_, &GameSession::Saved, this, renew);
    connect(this, &QDockWidget::visibilityChanged, this, renew);
}

bool ChangesPanel::IsBusy() const {
    return view_->IsBusy();
}

/// What was chosen stays chosen as long as it is there.
void ChangesPanel::OfferVersions() {
    const QSignalBlocker quiet(cmbVersion_);
    const QString chosen = VersionFile();
    cmbVersion_->clear();
    cmbVersion_->addItem(QStringLiteral("it was saved last"));
    if (session_.FileName().isEmpty())
        return;
    for (const FileVersion& version : versions_.List(session_.FileName())) {
        const QString note = NoteOf(version.kind);
        cmbVersion_->addItem(version.time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) +
                                 (note.isEmpty() ? note : QStringLiteral(" (%1)").arg(note)),
                             version.path);
    }
    cmbVersion_->setCurrentIndex(std::max(0, cmbVersion_->findData(chosen)));
}

QString ChangesPanel::VersionFile() const {
    return cmbVersion_->currentData().toString();
}

void ChangesPanel::Compare() {
    if (!isVisible())
        return;
    const GameModel& game = session_.Game();
    QString file = VersionFile();
    if (const GameModel* saved = session_.SavedGame(); saved != nullptr && file.isEmpty()) {
        view_->Compare([before = *saved, after = game] { return ComparedGames{before, after}; });
        return;
    }
    if (file.isEmpty())
        file = session_.FileName();
    if (file.isEmpty() || !QFileInfo::exists(file)) {
        view_->Clear(QStringLiteral("This game was never saved: all of it is new."));
        return;
    }
    view_->Compare([file, after = game] { return ComparedGames{ReadVersionFile(file, after), after}; });
}

} // namespace zem
