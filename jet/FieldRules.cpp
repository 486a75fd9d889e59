#include "jet/FieldRules.h"

#include "base/text.h"

namespace velora::jet {
namespace {

constexpr std::string_view kMagic("MR2\0", 4);
constexpr unsigned kNamesBlock = 0x80;
constexpr unsigned kColumnBlock = 1;
constexpr wchar_t kRequired[] = L"Required";
constexpr wchar_t kAllowZeroLength[] = L"AllowZeroLength";

void addName(std::string& to, std::wstring_view name)
{
    const std::string bytes = toUtf16le(name);
    add16(to, static_cast<unsigned>(bytes.size()));
    to += bytes;
}

void addBlock(std::string& to, unsigned type, const std::string& content)
{
    add32(to, static_cast<std::uint32_t>(content.size() + 6));
    add16(to, type);
    to += content;
}

void addFlag(std::string& to, unsigned nameIndex, bool value)
{
    add16(to, 9);
    add8(to, 1);
    add8(to, 1);
    add16(to, nameIndex);
    add16(to, 1);
    add8(to, value ? 0xFF : 0);
}

std::vector<std::wstring> readNames(Bytes block)
{
    std::vector<std::wstring> names;
    for (std::size_t at = 0; at + 2 <= block.size();) {
        const std::size_t size = block.u16(at);
        names.push_back(fromUtf16le(block.part(at + 2, size).text()));
        at += 2 + size;
    }
    return names;
}

FieldRule readColumn(Bytes block, const std::vector<std::wstring>& names)
{
    FieldRule rule;
    rule.field = fromUtf16le(block.part(6, block.u16(4)).text());
    std::size_t at = block.u32(0);
    while (at < block.size()) {
        const std::size_t size = block.u16(at);
        require(size >= 8, "a property is too short");
        const Bytes property = block.part(at, size);
        const std::size_t name = property.u16(4);
        const bool value = size > 8 && property.u8(8) != 0;
        if (name < names.size() && names[name] == kRequired)
            rule.required = value;
        else if (name < names.size() && names[name] == kAllowZeroLength)
            rule.allowZeroLength = value;
        at += size;
    }
    return rule;
}

} // namespace

std::vector<FieldRule> readFieldRules(std::string_view properties)
{
    std::vector<FieldRule> rules;
    if (!properties.starts_with(kMagic))
        return rules;
    const Bytes bytes(properties);
    try {
        std::vector<std::wstring> names;
        for (std::size_t at = kMagic.size(); at + 6 <= bytes.size();) {
            const std::size_t size = bytes.u32(at);
            require(size >= 6, "a block is too short");
            const Bytes content = bytes.part(at, size).from(6);
            if (bytes.u16(at + 4) == kNamesBlock)
                names = readNames(content);
            else if (bytes.u16(at + 4) == kColumnBlock)
                rules.push_back(readColumn(content, names));
            at += size;
        }
    } catch (const JetError&) {
        return {};
    }
    return rules;
}

std::string renderFieldRules(const std::vector<FieldRule>& rules)
{
    std::string all(kMagic), names;
    addName(names, kRequired);
    addName(names, kAllowZeroLength);
    addBlock(all, kNamesBlock, names);
    for (const FieldRule& rule : rules) {
        std::string name, content;
        addName(name, rule.field);
        add32(content, static_cast<std::uint32_t>(name.size() + 4));
        content += name;
        addFlag(content, 0, rule.required);
        addFlag(content, 1, rule.allowZeroLength);
        addBlock(all, kColumnBlock, content);
    }
    return all;
}

} // namespace velora::jet
