#include "plugin/ZorFFCUtility.h"

#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"

#include <QApplication>
#include <QVector>

#include <utility>

namespace {

constexpr int ShowWithoutDialog = 4;

/// Deletes this library's dialogs: the one that the host has not released, and those that it released while
/// they were in use. A widget can't outlive the application, nor an object the code of its class.
void deleteDialogs()
{
    // A dialog takes other windows along, its menus.
    QVector<CFFCUtility*> dialogs;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* dialog = qobject_cast<CFFCUtility*>(window))
            dialogs.append(dialog);
    }
    qDeleteAll(dialogs);
}

/// The library's objects have ended, as they do in a process that exits before Qt deletes the plug-in object.
bool hasEnded = false;

/// Takes the post routine back when the library goes, also from a host that has not deleted the plug-in
/// object.
class LibraryEnd
{
public:
    ~LibraryEnd()
    {
        qRemovePostRoutine(deleteDialogs);
        hasEnded = true;
    }
};

const LibraryEnd libraryEnd;

} // namespace

ZorFFCUtility::ZorFFCUtility()
{
    // No literal: a host's copies of the text may outlive this library.
    m_name = QString::fromLatin1("FFC Utility");
}

ZorFFCUtility::~ZorFFCUtility()
{
    // What Qt keeps for each thread is gone by then, and widgets can't end any more.
    if (hasEnded)
        return;
    ZorFFCUtility::Release();
    deleteDialogs();
}

int ZorFFCUtility::Init(ZBKHostCallback callback, void* context)
{
    if (!m_dialog) {
        auto* dialog = new CFFCUtility(nullptr);
        m_dialog = dialog;
        connect(dialog, &QObject::destroyed, this, [this, dialog] {
            if (m_dialog == dialog)
                m_dialog = nullptr;
        });
        // For a host that ends without Release. It is in the list once.
        qRemovePostRoutine(deleteDialogs);
        qAddPostRoutine(deleteDialogs);
    }
    // Set on every call, also on a dialog that is visible, which Qt hides then.
    m_dialog->setWindowFlags(Qt::Dialog | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                             Qt::WindowCloseButtonHint);
    m_dialog->SetHost(callback, context, this);
    return 0;
}

int ZorFFCUtility::Release()
{
    Reset();
    if (CFFCUtility* dialog = std::exchange(m_dialog, nullptr))
        dialog->Discard();
    return 0;
}

int ZorFFCUtility::Show(bool visible)
{
    if (!m_dialog)
        return ShowWithoutDialog;
    const zor::DialogUse use(*m_dialog, zor::DialogUse::Deletion::AtOnce);
    if (visible)
        m_dialog->show();
    else
        m_dialog->close();
    return 0;
}

int ZorFFCUtility::SetImage(_ZorImage* image)
{
    if (m_dialog && image) {
        const zor::DialogUse use(*m_dialog, zor::DialogUse::Deletion::AtOnce);
        m_dialog->SetFrame(image);
    }
    return 0;
}

void ZorFFCUtility::SetHostInfo(ZBKHostInfo info)
{
    if (m_dialog)
        m_dialog->SetHostInfo(info);
}

int ZorFFCUtility::Update()
{
    if (m_dialog) {
        const zor::DialogUse use(*m_dialog, zor::DialogUse::Deletion::AtOnce);
        m_dialog->Update();
    }
    return 0;
}

int ZorFFCUtility::GetResult(void** result)
{
    if (m_dialog && HasResult())
        m_dialog->GetResult(result);
    return 0;
}

bool ZorFFCUtility::HasResult()
{
    return m_dialog && m_dialog->HasResult();
}

void ZorFFCUtility::Reset()
{
    if (m_dialog)
        m_dialog->ResetData(false);
}
