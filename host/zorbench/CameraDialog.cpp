#include "host/zorbench/CameraDialog.h"

#include "host/camera/CameraSource.h"
#include "host/zorbench/BackgroundWork.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <exception>
#include <utility>

namespace zor {

namespace {

/// Without the serial number, which has a column of its own.
QString modelOf(CameraInfo camera)
{
    camera.serialNumber.clear();
    return QString::fromStdString(camera.name());
}

/// As people write it.
QString interfaceOf(const CameraInfo& camera)
{
    const QString name = QString::fromStdString(camera.protocol);
    if (name == QLatin1String("GigEVision"))
        return QStringLiteral("GigE Vision");
    if (name == QLatin1String("USB3Vision"))
        return QStringLiteral("USB3 Vision");
    return name;
}

} // namespace

CameraDialog::CameraDialog(const CameraInterfaces& interfaces, BackgroundWork& work, QWidget* parent)
    : QDialog(parent)
    , m_interfaces(interfaces)
    , m_work(work)
    , m_cameras(new QTableWidget(0, 4, this))
    , m_state(new QLabel(this))
{
    setWindowTitle(tr("Connect to a camera"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    m_searchAgain = buttons->addButton(tr("Search again"), QDialogButtonBox::ActionRole);
    m_connect = buttons->addButton(tr("Connect"), QDialogButtonBox::AcceptRole);
    m_connect->setDefault(true);
    for (QAbstractButton* button : buttons->buttons()) {
        button->setAccessibleName(button->text().remove(QLatin1Char('&')));
        // Return connects. It does not give up when something is being done.
        static_cast<QPushButton*>(button)->setAutoDefault(button == m_connect);
    }

    m_cameras->setAccessibleName(tr("Cameras"));
    m_cameras->setHorizontalHeaderLabels({tr("Camera"), tr("Serial number"), tr("Address"), tr("Interface")});
    m_cameras->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_cameras->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_cameras->verticalHeader()->hide();
    m_cameras->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_cameras->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_cameras->setSelectionMode(QAbstractItemView::SingleSelection);
    m_cameras->setTabKeyNavigation(false);
    // What a camera says is no markup.
    m_state->setTextFormat(Qt::PlainText);
    m_state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_state->setWordWrap(true);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_cameras, 1);
    rows->addWidget(m_state);
    rows->addWidget(buttons);
    resize(640, 320);

    connect(m_searchAgain, &QPushButton::clicked, this, &CameraDialog::search);
    connect(buttons, &QDialogButtonBox::accepted, this, &CameraDialog::connectToChosen);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_cameras, &QTableWidget::cellDoubleClicked, this, &CameraDialog::connectToChosen);
}

void CameraDialog::ask(const QString& preferredId)
{
    if (isVisible()) {
        raise();
        activateWindow();
        return;
    }
    m_preferredId = preferredId;
    open();
    search();
}

void CameraDialog::done(int result)
{
    ++m_question;
    QDialog::done(result);
}

void CameraDialog::search()
{
    m_cameras->setRowCount(0);
    setBusy(tr("Looking for cameras\u2026"));
    m_work.start(this, [this, question = m_question, interfaces = m_interfaces] {
        return [this, question, found = findCameras(interfaces)] {
            if (question == m_question)
                showFound(found);
        };
    });
}

void CameraDialog::showFound(const std::vector<CameraInfo>& found)
{
    m_found = found;
    m_cameras->setRowCount(static_cast<int>(m_found.size()));
    int chosen = 0;
    for (int row = 0; row < m_cameras->rowCount(); ++row) {
        const CameraInfo& camera = m_found[static_cast<std::size_t>(row)];
        const QStringList texts{modelOf(camera), QString::fromStdString(camera.serialNumber),
                                QString::fromStdString(camera.address), interfaceOf(camera)};
        for (int column = 0; column < texts.size(); ++column)
            m_cameras->setItem(row, column, new QTableWidgetItem(texts[column]));
        if (QString::fromStdString(camera.id) == m_preferredId)
            chosen = row;
    }
    setIdle(m_found.empty()
                ? tr("No camera was found. Check that it has power, that its cable is plugged in, "
                     "and that it has an address in this network; then search again.")
                : QString());
    m_cameras->setCurrentCell(chosen, 0);
}

void CameraDialog::connectToChosen()
{
    const int row = m_cameras->currentRow();
    if (row < 0)
        return;
    const CameraInfo camera = m_found[static_cast<std::size_t>(row)];
    m_preferredId = QString::fromStdString(camera.id);
    setBusy(tr("Connecting to %1\u2026").arg(QString::fromStdString(camera.name())));
    m_work.start(this, [this, question = m_question, id = camera.id]() -> BackgroundWork::Sequel {
        try {
            return [this, question, id, source = std::make_shared<CameraSource>(id)]() mutable {
                takeSource(question, QString::fromStdString(id), std::move(source));
            };
        } catch (const std::exception& error) {
            return [this, question, sentence = QString::fromUtf8(error.what())] {
                if (question == m_question)
                    setIdle(sentence);
            };
        }
    });
}

void CameraDialog::takeSource(int question, const QString& id, std::shared_ptr<CameraSource> source)
{
    if (question == m_question) {
        accept();
        emit connected(id, source);
        return;
    }
    // Nobody wants it any more, and giving it back may take a while.
    m_work.start(nullptr, [unwanted = std::move(source)] { return BackgroundWork::Sequel(); });
}

void CameraDialog::setBusy(const QString& what)
{
    m_state->setText(what);
    m_cameras->setEnabled(false);
    m_searchAgain->setEnabled(false);
    m_connect->setEnabled(false);
}

void CameraDialog::setIdle(const QString& problem)
{
    m_state->setText(problem);
    m_cameras->setEnabled(!m_found.empty());
    m_searchAgain->setEnabled(true);
    m_connect->setEnabled(!m_found.empty());
    if (m_found.empty())
        m_searchAgain->setFocus();
    else
        m_cameras->setFocus();
}

} // namespace zor
