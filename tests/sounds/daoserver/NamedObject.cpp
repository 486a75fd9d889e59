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

/// Lives by its reference count.
class NamedObject final : public IDispatch {
public:
    NamedObject(Members members, std::any held)
        : content(std::move(held)), members_(std::move(members))
    {
    }
    virtual ~NamedObject() = default;

    STDMETHODIMP QueryInterface(REFIID id, void** out) override
    {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
        *out = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override
    {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* wanted, UINT count, LCID, DISPID* ids) override
    {
        const std::wstring name = wanted[0];
        if (count != 1 || (!members_.contains(name) && !members_.contains(name + L"=")))
            return DISP_E_UNKNOWNNAME;
        auto& known = names();
        auto found = std::find(known.begin(), known.end(), name);
        if (found == known.end())
            found = known.insert(known.end(), name);
        ids[0] = static_cast<DISPID>(found - known.begin()) + 1;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* answer,
                        EXCEPINFO* error, UINT*) override
    {
        try {
            const bool put = (kind & DISPATCH_PROPERTYPUT) != 0;
            if (put
                && (given->cNamedArgs != 1 || given->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT))
                return DISP_E_PARAMNOTFOUND;
            const auto member =
                members_.find(names().at(static_cast<std::size_t>(id) - 1) + (put ? L"=" : L""));
            if (member == members_.end())
                return DISP_E_MEMBERNOTFOUND;
            Call call;
            for (UINT i = given->cArgs; i > 0; --i)
                call.arguments.push_back(&given->rgvarg[i - 1]);
            LateValue result = member->second(call);
            if (answer) {
                *answer = result.variant();
                VariantInit(result.out());
            }
            return S_OK;
        } catch (const JetError& failed) {
            return describe(error, failed.number(), failed.what());
        } catch (const std::exception& failed) {
            return describe(error, jeterr::kInvalidArgument, failed.what());
        }
    }

    const std::any content;

private:
    Members members_;
    ULONG references_ = 0;
};

} // namespace

std::wstring Call::text(std::size_t argument) const
{
    return copied(arguments.at(argument)).text();
}

long Call::number(std::size_t argument) const
{
    return copied(arguments.at(argument)).number();
}

const std::any* Call::contentOf(std::size_t argument) const
{
    const VARIANT* given = arguments.at(argument);
    const auto* object =
        given->vt == VT_DISPATCH ? dynamic_cast<NamedObject*>(given->pdispVal) : nullptr;
    return object ? &object->content : nullptr;
}

void Call::wrongObject()
{
    throw JetError(jeterr::kConversion, "another kind of object is needed");
}

LateValue object(Members members, std::any content)
{
    return LateValue(
        static_cast<IDispatch*>(new NamedObject(std::move(members), std::move(content))));
}

} // namespace velora::test
