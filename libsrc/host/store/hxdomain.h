#pragma once

// CHXDomain says whose data is meant: it carries the name of a tenant's database to the services
// that open it.
//
//     CHXDomain domain;
//     domain.SetTenantDBName("acme");
//     CHXInterfaceTypeManagement management(domain);
//
// A plain value: copies are independent, one object is used by one thread at a time.

#include "host/runtime/tzexport.h"

#include <string>

class TZPARSER_API CHXDomain {
public:
    // Any bytes; whether they can name a tenant is judged by who opens it (IsTenantName).
    void SetTenantDBName(const std::string& name) { m_tenantDBName = name; }
    // Empty until set. Lives until the next change.
    const std::string& GetTenantDBName() const { return m_tenantDBName; }

private:
    std::string m_tenantDBName;
};
