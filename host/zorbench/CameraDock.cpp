#include "host/zorbench/CameraDock.h"

#include "host/camera/CameraSource.h"
#include "host/zorbench/CameraAccess.h"
#include "host/zorbench/CameraPanel.h"
#include "host/zorbench/FeatureView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include <utility>

namespace zor {

namespace {

const char* const VisibilityKey = "Camera/Visibility";

} // namespace

CameraDock::CameraDock(BackgroundWork& work, QSettings& settings, QWidget* parent)
    : QDockWidget(tr("Camera"), parent)
    , m_work(work)
    , m_settings(settings)
    , m_content(new QWidget(this))
    , m_state(new QLabel(m_content))
    , m_controls(new QWidget(m_content))
    , m_panel(new CameraPanel(m_controls))
    , m_visibility(new QComboBox(m_controls))
    , m_features(new FeatureView(m_model, m_controls))
    , m_turn(this)
{
    setObjectName(QStringLiteral("CameraDock"));
    setAccessibleName(windowTitle());
    // What a camera says is no markup.
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    auto* readAgain = new QPushButton(tr("Read again"), m_controls);
    readAgain->setAccessibleName(readAgain->text());

    auto* choice = new QHBoxLayout;
    // A combo box goes by its label: its own name is what is chosen.
    auto* visibility = new QLabel(tr("Visibility"), m_controls);
    visibility->setBuddy(m_visibility);
    choice->addWidget(visibility);
    choice->addWidget(m_visibility, 1);
    choice->addWidget(readAgain);
    auto* parts = new QVBoxLayout(m_controls);
    parts->setContentsMargins({});
    parts->addWidget(m_panel);
    parts->addLayout(choice);
    parts->addWidget(m_features, 1);
    auto* rows = new QVBoxLayout(m_content);
    rows->addWidget(m_state);
    rows->addWidget(m_controls, 1);
    setWidget(m_content);

    addVisibility();
    connect(readAgain, &QPushButton::clicked, this, [this] { m_access->read(); });
    connect(
        m_panel, &CameraPanel::changed, this,
        [this](const QString& name, const CameraAccess::Change& change) { m_access->change(name, change); });
    connect(m_panel, &CameraPanel::triggered, this,
            [this] { m_access->perform([](CameraSource& camera) { camera.triggerBySoftware(); }); });
    connect(&m_model, &FeatureModel::chosen, this, [this](const QString& name, const QString& value) {
        m_access->change(name, [feature = name.toStdString(), text = value.toStdString()](
                                   CameraSource& camera) { camera.setFeature(feature, text); });
    });
    connect(&m_model, &FeatureModel::executed, this, [this](const QString& command) {
        m_access->perform([name = command.toStdString()](CameraSource& camera) { camera.execute(name); });
        m_access->read();
    });
    m_turn.setInterval(Pause);
    connect(&m_turn, &QTimer::timeout, this, &CameraDock::look);
    showState();
}

CameraDock::~CameraDock()
{
    // It shows the model until its end.
    delete m_content;
}

void CameraDock::addVisibility()
{
    m_visibility->setAccessibleName(tr("Visibility"));
    m_visibility->setToolTip(tr("For whom the features are that are shown"));
    m_visibility->addItems({tr("Beginner"), tr("Expert"), tr("Guru")});
    connect(m_visibility, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int index) {
        m_features->setVisibility(static_cast<CameraFeature::Visibility>(index));
        m_settings.setValue(QLatin1String(VisibilityKey), index);
    });
    const int kept = m_settings.value(QLatin1String(VisibilityKey)).toInt();
    m_visibility->setCurrentIndex(kept > 0 && kept < m_visibility->count() ? kept : 0);
}

void CameraDock::setSource(CameraSource* source)
{
    m_access.reset();
    m_source = source;
    m_isLost = false;
    m_losses = 0;
    m_turn.stop();
    if (m_source) {
        m_access = std::make_unique<CameraAccess>(*m_source, m_work);
        connect(m_access.get(), &CameraAccess::controlsRead, m_panel, &CameraPanel::showControls);
        connect(m_access.get(), &CameraAccess::featuresRead, &m_model, &FeatureModel::update);
        connect(m_access.get(), &CameraAccess::refused, this, &CameraDock::refused);
        m_access->read();
        m_turn.start();
    } else {
        m_model.update({});
    }
    showState();
}

void CameraDock::look()
{
    const bool isLost = m_source->isLost();
    const std::uint64_t losses = m_source->losses();
    const bool wasAway = losses != m_losses;
    // It may be another one of its kind, or have lost what no setting was about.
    if (!isLost && (m_isLost || wasAway))
        m_access->read();
    const bool isNews = isLost != m_isLost || wasAway;
    m_isLost = isLost;
    m_losses = losses;
    showState();
    if (isNews)
        emit stateChanged();
}

void CameraDock::showState()
{
    m_controls->setEnabled(m_source && !m_isLost);
    if (!m_source) {
        m_state->setText(tr("No camera is connected."));
        return;
    }
    QString state = QString::fromStdString(m_source->name());
    if (m_isLost) {
        state += tr(" is lost");
        const QString problem = QString::fromStdString(m_source->problem());
        if (!problem.isEmpty())
            state += QStringLiteral(": ") + problem;
        state += tr(". It is looked for until it is back.");
    }
    m_state->setText(state);
}

} // namespace zor
