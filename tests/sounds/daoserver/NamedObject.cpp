#include "sounds/daoserver/NamedObject.h"

#include "jet/JetError.h"

#include <oleauto.h>

#include <algorithm>

namespace velora::test {
namespace {

/// The names that have been asked for; a name's place is its number.
std::vector<std::wstring>& names()
{
    static std::vector<std::wstring> known;
    return known;
}

HRESULT describe(EXCEPINFO* error, long number, const char* what)
{
    if (!error)
        return DISP_E_EXCEPTION;
    *error = {};
    error->scode = static_cast<SCODE>(0x800A0000 | static_cast<unsigned long>(number));
    error->bstrSource = SysAllocString(L"DAO of the tests");
    error->bstrDescription = SysAllocString(std::wstring(what, what + strlen(what)).c_str());
    return DISP_E_EXCEPTION;
}

LateValue copied(const VARIANT* value)
{
    LateValue copy;
    VariantCopyInd(copy.out(), const_cast<VARIANT*>(value));
    return copy;
}

} // namespace

std::wstring Call::text(std::size_t argument) const
{
    return copied(arguments.at(argument)).text();
}

long Call::number(std::size_t argument) const
{
    return copied(arguments.at(argument)).number();
}

bool Call::isNumber(std::size_t argument) const
{
    return argument < arguments.size() && arguments[argument]->vt == VT_I4;
}

IDispatch* Call::object(std::size_t argument) const
{
    const VARIANT* given = arguments.at(argument);
    return given->vt == VT_DISPATCH ? given->pdispVal : nullptr;
}

STDMETHODIMP NamedObject::QueryInterface(REFIID id, void** out)
{
    const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
    *out = known ? this : nullptr;
    if (known)
        AddRef();
    return known ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) NamedObject::Release()
{
    const long left = --references_;
    if (left == 0)
        delete this;
    return static_cast<ULONG>(left);
}

STDMETHODIMP NamedObject::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

STDMETHODIMP NamedObject::GetIDsOfNames(REFIID, LPOLESTR* wanted, UINT count, LCID, DISPID* ids)
{
    if (count != 1 || !knows(wanted[0]))
        return DISP_E_UNKNOWNNAME;
    auto& known = names();
    auto found = std::find(known.begin(), known.end(), wanted[0]);
    if (found == known.end())
        found = known.insert(known.end(), wanted[0]);
    ids[0] = static_cast<DISPID>(found - known.begin()) + 1;
    return S_OK;
}

STDMETHODIMP NamedObject::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given,
                                 VARIANT* answer, EXCEPINFO* error, UINT*)
{
    try {
        Call made;
        made.name = names().at(static_cast<std::size_t>(id) - 1);
        made.put = (kind & DISPATCH_PROPERTYPUT) != 0;
        if (made.put
            && (given->cNamedArgs != 1 || given->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
            return DISP_E_PARAMNOTFOUND;
        for (UINT i = given->cArgs; i > 0; --i)
            made.arguments.push_back(&given->rgvarg[i - 1]);
        LateValue result = call(made);
        if (answer) {
            *answer = result.variant();
            VariantInit(result.out());
        }
        return S_OK;
    } catch (const NoMember&) {
        return DISP_E_MEMBERNOTFOUND;
    } catch (const JetError& failed) {
        return describe(error, failed.number(), failed.what());
    } catch (const std::exception& failed) {
        return describe(error, jeterr::kInvalidArgument, failed.what());
    }
}

} // namespace velora::test
