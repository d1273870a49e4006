#include "plugin/ZorFFCUtility.h"

#include "dialog/CFFCUtility.h"

namespace {

constexpr int ShowWithoutDialog = 4;

} // namespace

ZorFFCUtility::ZorFFCUtility()
{
    // No literal: a host's copies of the text may outlive this library.
    m_name = QString::fromLatin1("FFC Utility");
}

ZorFFCUtility::~ZorFFCUtility()
{
    ZorFFCUtility::Release();
}

int ZorFFCUtility::Init(ZBKHostCallback callback, void* context)
{
    if (!m_dialog)
        m_dialog = new CFFCUtility(nullptr);
    // Set on every call, also on a dialog that is visible, which Qt hides then.
    m_dialog->setWindowFlags(Qt::Dialog | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint |
                             Qt::WindowCloseButtonHint);
    m_dialog->SetHost(callback, context, this);
    return 0;
}

int ZorFFCUtility::Release()
{
    Reset();
    delete m_dialog;
    m_dialog = nullptr;
    return 0;
}

int ZorFFCUtility::Show(bool visible)
{
    if (!m_dialog)
        return ShowWithoutDialog;
    if (visible)
        m_dialog->show();
    else
        m_dialog->close();
    return 0;
}

int ZorFFCUtility::SetImage(_ZorImage* image)
{
    if (m_dialog && image)
        m_dialog->SetFrame(image);
    return 0;
}

void ZorFFCUtility::SetHostInfo(ZBKHostInfo info)
{
    if (m_dialog)
        m_dialog->SetHostInfo(info);
}

int ZorFFCUtility::Update()
{
    if (m_dialog)
        m_dialog->Update();
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
