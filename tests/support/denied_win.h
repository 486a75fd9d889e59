#pragma once
#include "base/handles.h"

#include <aclapi.h>

#include <stdexcept>
#include <string>

namespace velora::test {

/// Takes rights from a key of the current user until it is destroyed.
class Denied {
public:
    Denied(const std::wstring& path, DWORD rights) : path_(path)
    {
        EXPLICIT_ACCESSW entries[2] = {};
        wchar_t everyone[] = L"EVERYONE";
        for (auto& entry : entries) {
            entry.Trustee.TrusteeForm = TRUSTEE_IS_NAME;
            entry.Trustee.ptstrName = everyone;
            entry.grfInheritance = NO_INHERITANCE;
        }
        entries[0].grfAccessMode = DENY_ACCESS;
        entries[0].grfAccessPermissions = rights;
        entries[1].grfAccessMode = GRANT_ACCESS;
        entries[1].grfAccessPermissions = KEY_ALL_ACCESS;
        PACL list = nullptr;
        if (SetEntriesInAclW(2, entries, nullptr, &list) != ERROR_SUCCESS)
            throw std::runtime_error("cannot make an access list");
        apply(list);
        LocalFree(list);
    }
    ~Denied() { apply(nullptr); }

private:
    void apply(PACL list)
    {
        SECURITY_DESCRIPTOR descriptor;
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, WRITE_DAC, &key) == ERROR_SUCCESS) {
            const RegistryKey owner(key);
            RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor);
        }
    }
    std::wstring path_;
};

} // namespace velora::test
