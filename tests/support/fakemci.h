#pragma once
// An MCI that writes down what it is sent and answers what a test has laid ready.
#include "sounds/clsMultiMedia.h"

#include <map>
#include <vector>

class FakeMci final : public velora::MciPort {
public:
    std::optional<std::wstring> send(const std::wstring& command) override
    {
        sent.push_back(command);
        if (fails)
            return std::nullopt;
        for (const auto& [ending, answer] : answers)
            if (command.ends_with(ending))
                return answer;
        return std::wstring();
    }
    std::wstring sendable(const std::wstring& path) override
    {
        return shortPath.empty() ? path : shortPath;
    }

    /// By the command's ending (" mode"); everything else is answered with an empty text.
    std::map<std::wstring, std::wstring> answers;
    std::vector<std::wstring> sent;
    std::wstring shortPath;
    bool fails = false;
};
