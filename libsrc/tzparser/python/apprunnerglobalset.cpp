#include "tzparser/python/apprunnerglobalset.h"

#include "host/runtime/tls.h"

namespace {

CAppRunnerGlobalSet* Only = nullptr;

}  // namespace

CAppRunnerGlobalSet::CAppRunnerGlobalSet() : m_tls(std::make_unique<CTls>()) {}

CAppRunnerGlobalSet::~CAppRunnerGlobalSet() = default;

CAppRunnerGlobalSet* CAppRunnerGlobalSet::Instance() {
    // No lock on purpose: scripts ask on every run, and the first call mustn't race anyway.
    if (Only == nullptr) Only = new CAppRunnerGlobalSet;
    return Only;
}

void CAppRunnerGlobalSet::Destroy() {
    delete Only;
    Only = nullptr;
}

bool CAppRunnerGlobalSet::SetPyFuncContext(void* context) {
    return m_tls && m_tls->SetValue(context);
}

void* CAppRunnerGlobalSet::GetPyFuncContext() const {
    return m_tls ? m_tls->GetValue() : nullptr;
}
