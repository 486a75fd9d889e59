#include "sounds/LateObject.h"

#include "base/text.h"

#include <oleauto.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace velora {
namespace {

[[noreturn]] void fail(const std::wstring& what, long code)
{
    throw LateError(toUtf8(what), static_cast<unsigned long>(code));
}

/// The system's functions take values that they only read as if they changed them.
VARIANT* changeable(const VARIANT& value)
{
    return const_cast<VARIANT*>(&value);
}

/// With what the object itself says of the error.
[[noreturn]] void failInvoke(const wchar_t* name, HRESULT result, EXCEPINFO& info)
{
    if (info.pfnDeferredFillIn)
        info.pfnDeferredFillIn(&info);
    std::wstring what = name;
    if (info.bstrDescription)
        what += std::wstring(L": ") + info.bstrDescription;
    const long code = result != DISP_E_EXCEPTION ? result
                      : info.scode               ? info.scode
                                                 : static_cast<long>(info.wCode);
    SysFreeString(info.bstrSource);
    SysFreeString(info.bstrDescription);
    SysFreeString(info.bstrHelpFile);
    fail(what, code);
}

} // namespace

LateValue::LateValue(long number) noexcept : LateValue()
{
    value_.vt = VT_I4;
    value_.lVal = number;
}

LateValue::LateValue(bool truth) noexcept : LateValue()
{
    value_.vt = VT_BOOL;
    value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

LateValue::LateValue(std::wstring_view text) : LateValue()
{
    value_.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (!value_.bstrVal)
        throw std::bad_alloc();
    value_.vt = VT_BSTR;
}

LateValue::LateValue(IDispatch* object) noexcept : LateValue()
{
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object;
    if (object)
        object->AddRef();
}

LateValue::LateValue(const LateValue& other) : LateValue()
{
    if (const HRESULT result = VariantCopy(&value_, changeable(other.value_)); FAILED(result))
        fail(L"cannot copy a value", result);
}

LateValue LateValue::null() noexcept
{
    LateValue value;
    value.value_.vt = VT_NULL;
    return value;
}

LateValue& LateValue::operator=(LateValue&& other) noexcept
{
    std::swap(value_, other.value_);
    return *this;
}

long LateValue::number() const
{
    LateValue converted;
    if (const HRESULT result = VariantChangeType(converted.out(), changeable(value_), 0, VT_I4);
        FAILED(result))
        fail(L"not a number", result);
    return converted.value_.lVal;
}

std::wstring LateValue::text() const
{
    LateValue converted;
    if (const HRESULT result = VariantChangeType(converted.out(), changeable(value_), 0, VT_BSTR);
        FAILED(result))
        fail(L"not a text", result);
    const BSTR text = converted.value_.bstrVal;
    return std::wstring(text ? text : L"", SysStringLen(text));
}

LateObject::LateObject(const LateValue& value)
{
    const VARIANT& variant = value.variant();
    if (variant.vt == VT_DISPATCH && variant.pdispVal) {
        object_ = variant.pdispVal;
        object_->AddRef();
    } else if (variant.vt != VT_UNKNOWN || !variant.punkVal
               || FAILED(variant.punkVal->QueryInterface(IID_IDispatch,
                                                         reinterpret_cast<void**>(&object_)))) {
        fail(L"not an object", DISP_E_TYPEMISMATCH);
    }
}

LateObject::LateObject(LateObject&& other) noexcept : object_(std::exchange(other.object_, nullptr))
{
}

LateObject& LateObject::operator=(LateObject&& other) noexcept
{
    std::swap(object_, other.object_);
    return *this;
}

LateObject::~LateObject()
{
    if (object_)
        object_->Release();
}

LateObject LateObject::create(const wchar_t* programId)
{
    LateObject made;
    CLSID id;
    if (FAILED(CLSIDFromProgID(programId, &id))
        || FAILED(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                   IID_IDispatch, reinterpret_cast<void**>(&made.object_))))
        made.object_ = nullptr;
    return made;
}

LateValue LateObject::invoke(const wchar_t* name, WORD kind, const LateValue* values,
                             std::size_t count) const
{
    if (!object_)
        fail(std::wstring(name) + L": no object", E_POINTER);
    DISPID id = 0;
    auto* mutableName = const_cast<wchar_t*>(name);
    if (const HRESULT result =
            object_->GetIDsOfNames(IID_NULL, &mutableName, 1, LOCALE_SYSTEM_DEFAULT, &id);
        FAILED(result))
        fail(name, result);
    // Arguments go from the last to the first. They stay ours: no copies are made of them.
    std::vector<VARIANT> arguments;
    for (std::size_t i = count; i > 0; --i)
        arguments.push_back(values[i - 1].variant());
    DISPID valueOfPut = DISPID_PROPERTYPUT;
    DISPPARAMS call = {arguments.data(), nullptr, static_cast<UINT>(count), 0};
    if (kind & DISPATCH_PROPERTYPUT) {
        call.rgdispidNamedArgs = &valueOfPut;
        call.cNamedArgs = 1;
    }
    LateValue answer;
    EXCEPINFO info = {};
    const HRESULT result =
        object_->Invoke(id, IID_NULL, LOCALE_SYSTEM_DEFAULT, kind, &call,
                        kind & DISPATCH_PROPERTYPUT ? nullptr : answer.out(), &info, nullptr);
    if (FAILED(result))
        failInvoke(name, result, info);
    return answer;
}

} // namespace velora
