#include "host/runtime/tls.h"

CTls::CTls() : m_hasKey(pthread_key_create(&m_key, nullptr) == 0) {}

CTls::~CTls() {
    if (m_hasKey) pthread_key_delete(m_key);
}

bool CTls::SetValue(void* value) {
    return m_hasKey && pthread_setspecific(m_key, value) == 0;
}

void* CTls::GetValue() const {
    return m_hasKey ? pthread_getspecific(m_key) : nullptr;
}
