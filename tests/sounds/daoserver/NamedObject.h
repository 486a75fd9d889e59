#pragma once
// Automation objects for COM servers of tests: a table of members, found by name.
#include "sounds/LateObject.h"

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace velora::test {

/// The arguments of a call, in their order.
class Call {
public:
    std::vector<const VARIANT*> arguments;

    std::wstring text(std::size_t argument) const;
    long number(std::size_t argument) const;
    bool isNumber(std::size_t argument) const { return arguments.at(argument)->vt == VT_I4; }
    bool isNull(std::size_t argument) const { return arguments.at(argument)->vt == VT_NULL; }
    /// What the object passed stands for, see object(); throws JetError for another one.
    template <class Content>
    const Content& content(std::size_t argument) const
    {
        const auto* held = std::any_cast<std::shared_ptr<Content>>(contentOf(argument));
        if (!held)
            wrongObject();
        return **held;
    }

private:
    const std::any* contentOf(std::size_t argument) const;
    [[noreturn]] static void wrongObject();
};

/// Answers a call. An exception becomes the number that DAO gives.
class Member {
public:
    template <class Body>
    Member(Body body)
        : run_([body](const Call& call) -> LateValue {
              if constexpr (std::is_void_v<std::invoke_result_t<Body, const Call&>>) {
                  body(call);
                  return {};
              } else {
                  return LateValue(body(call));
              }
          })
    {
    }
    LateValue operator()(const Call& call) const { return run_(call); }

private:
    std::function<LateValue(const Call&)> run_;
};

/// By name; a property's name has "=" behind it where it is set.
using Members = std::map<std::wstring, Member>;

/// A new object. `content`, a shared_ptr, is what it stands for as an argument of other calls.
LateValue object(Members members, std::any content = {});

} // namespace velora::test
