#pragma once
// An object of another program, its methods and properties found by name when they are called (late
// bound COM). COM must be initialised on the calling thread.
#include "base/trap.h"
#include "base/win.h"

#include <oaidl.h>

#include <string>
#include <string_view>

namespace velora {

/// What the object answered with: its own number (an HRESULT) as code().
class LateError : public Error {
public:
    using Error::Error;
};

/// A value of such an object.
class LateValue {
public:
    LateValue() noexcept { VariantInit(&value_); }
    LateValue(long number) noexcept;
    LateValue(bool truth) noexcept;
    LateValue(std::wstring_view text);
    LateValue(const wchar_t* text) : LateValue(std::wstring_view(text)) {}
    LateValue(IDispatch* object) noexcept;
    static LateValue null() noexcept;
    LateValue(LateValue&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    LateValue& operator=(LateValue&& other) noexcept;
    LateValue(const LateValue& other);
    LateValue& operator=(const LateValue&) = delete;
    ~LateValue() { VariantClear(&value_); }

    bool isNull() const { return value_.vt == VT_NULL || value_.vt == VT_EMPTY; }
    /// Converted as the system does it; throws LateError where it cannot.
    long number() const;
    bool truth() const { return number() != 0; }
    std::wstring text() const;
    const VARIANT& variant() const { return value_; }
    VARIANT* out() { return &value_; }

private:
    VARIANT value_;
};

class LateObject {
public:
    LateObject() = default;
    /// Takes over an object that a call answered; throws LateError when it is none.
    explicit LateObject(const LateValue& value);
    LateObject(LateObject&& other) noexcept;
    LateObject& operator=(LateObject&& other) noexcept;
    ~LateObject();

    /// A new object of the class that this name is registered for; empty when there is none, or it
    /// cannot be created.
    static LateObject create(const wchar_t* programId);

    explicit operator bool() const { return object_ != nullptr; }
    IDispatch* get() const { return object_; }

    /// All throw LateError.
    template <class... Args>
    LateValue call(const wchar_t* method, const Args&... arguments) const
    {
        // Some objects answer a property to either kind only.
        return invokeWith(method, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments...);
    }
    template <class... Args>
    LateValue get(const wchar_t* property, const Args&... arguments) const
    {
        return call(property, arguments...);
    }
    /// The last argument is the value.
    template <class... Args>
    void put(const wchar_t* property, const Args&... arguments) const
    {
        invokeWith(property, DISPATCH_PROPERTYPUT, arguments...);
    }

private:
    template <class... Args>
    LateValue invokeWith(const wchar_t* name, WORD kind, const Args&... arguments) const
    {
        LateValue values[sizeof...(Args) + 1] = {LateValue(arguments)...};
        return invoke(name, kind, values, sizeof...(Args));
    }
    LateValue invoke(const wchar_t* name, WORD kind, const LateValue* values,
                     std::size_t count) const;

    IDispatch* object_ = nullptr;
};

} // namespace velora
