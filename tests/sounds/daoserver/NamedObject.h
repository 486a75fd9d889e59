#pragma once
// An automation object whose members are found by name, for COM servers of tests.
#include "sounds/LateObject.h"

#include <memory>
#include <string>
#include <vector>

namespace velora::test {

/// What a call brings: the member's name, how it is used, the arguments in their order.
struct Call {
    std::wstring name;
    bool put = false;
    std::vector<const VARIANT*> arguments;

    bool is(const wchar_t* member) const { return !put && name == member; }
    bool sets(const wchar_t* member) const { return put && name == member; }
    std::wstring text(std::size_t argument) const;
    long number(std::size_t argument) const;
    bool isNumber(std::size_t argument) const;
    /// The object passed; null when it is none.
    IDispatch* object(std::size_t argument) const;
};

/// A member that the object does not have.
struct NoMember {};

/// Answers calls; an exception becomes the number that DAO gives. Lives by its reference count.
class NamedObject : public IDispatch {
public:
    virtual ~NamedObject() = default;
    STDMETHODIMP QueryInterface(REFIID id, void** out) override;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* answer,
                        EXCEPINFO* error, UINT*) override;

protected:
    /// Throws NoMember for what there is not, JetError for what goes wrong.
    virtual LateValue call(const Call& call) = 0;
    /// False makes the name unknown from the start.
    virtual bool knows(const std::wstring&) const { return true; }

private:
    long references_ = 0;
};

/// An object as a value.
template <class Object, class... Args>
LateValue made(Args&&... args)
{
    return LateValue(static_cast<IDispatch*>(new Object(std::forward<Args>(args)...)));
}

} // namespace velora::test
