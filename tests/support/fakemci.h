#pragma once
// An MCI and a media control that write down what they are sent and answer what a test has laid
// ready.
#include "sounds/clsSoundPlayer.h"

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

class FakeControl final : public velora::MediaControl {
public:
    bool play(const std::wstring& path) override
    {
        playing = path;
        return works;
    }
    void pause() override { ++pauses; }
    void stop() override { playing.clear(); }
    bool busy() override { return isBusy; }
    double length() override { return 4; }
    double position() override { return at; }

    bool works = true, isBusy = true;
    double at = 1;
    int pauses = 0;
    std::wstring playing;
};
