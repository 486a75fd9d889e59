#pragma once
// Random operations on a database, each compared with what a simple model says.
#include "base/random.h"
#include "jet/IndexKey.h"
#include "support/jet_check.h"
#include "support/jet_memory.h"

#include <doctest/doctest.h>

namespace velora {

struct StressRecord {
    std::wstring name, title, comments;
    bool operator==(const StressRecord&) const = default;
};

/// What the database should hold: by table, by the key's bytes.
using StressModel = std::map<std::wstring, std::map<std::string, StressRecord>>;

inline std::string keyBytes(const std::wstring& name)
{
    std::string key;
    jet::addTextKey(key, name);
    return key;
}

inline constexpr wchar_t kStressPath[] = L"stress.mdb";

class Stress {
public:
    Stress(std::uint64_t seed, std::size_t longestName, std::size_t longestText)
        : random_(seed), longestName_(longestName), longestText_(longestText)
    {
        clsJetDatabase::createDatabase(kStressPath, kJetLocaleGeneral, files_);
        open();
        for (const wchar_t* name : {L"Alpha", L"beta", L"Gamma"}) {
            db_->appendTable(descriptionTable(name));
            model_[name];
        }
    }

    void run(int operations)
    {
        for (int i = 0; i < operations; ++i) {
            step();
            if (i % 500 == 499) {
                db_->close();
                REQUIRE(checkJetFile(files_, kStressPath) == "");
                open();
                compare();
            }
        }
        compare();
        db_->close();
        REQUIRE(checkJetFile(files_, kStressPath) == "");
    }

    std::size_t pages() { return files_.files.at(kStressPath)->size() / 4096; }
    MemoryFiles& files() { return files_; }
    const StressModel& model() { return model_; }

private:
    std::size_t below(std::size_t n)
    {
        return static_cast<std::size_t>(random_.rnd() * static_cast<double>(n));
    }
    void open() { db_ = clsJetDatabase::openDatabase(kStressPath, files_); }

    std::wstring text(std::size_t longest)
    {
        // Letters of all kinds of weight, so that keys share long beginnings and then differ.
        static const std::wstring letters = L"aaaaabBcC -'.é\u00C6~\u20AC\u0416z09";
        std::wstring value(1 + below(longest), L'a');
        for (std::size_t i = value.size() / 2; i < value.size(); ++i)
            value[i] = letters[below(letters.size())];
        return value;
    }
    std::wstring anyTable()
    {
        auto at = model_.begin();
        std::advance(at, static_cast<long>(below(model_.size())));
        return at->first;
    }
    std::wstring presentName(const std::map<std::string, StressRecord>& records)
    {
        auto at = records.lower_bound(keyBytes(text(longestName_)));
        return at == records.end() ? records.begin()->second.name : at->second.name;
    }

    void step()
    {
        const std::size_t what = below(1000);
        if (what < 2)
            renameTable();
        else if (what < 4)
            replaceTable();
        else if (what < 8)
            transaction();
        else
            changeRecord(what);
    }

    void changeRecord(std::size_t what)
    {
        const std::wstring table = anyTable();
        auto& records = model_[table];
        const auto set = db_->openRecordset(table);
        set->setIndex(L"PrimaryKey");
        if (what < 500 || records.empty())
            add(*set, records);
        else if (what < 700)
            edit(*set, records);
        else if (what < 900)
            erase(*set, records);
        else
            lookUp(*set, records);
    }

    void add(clsJetRecordset& set, std::map<std::string, StressRecord>& records)
    {
        const StressRecord record{text(longestName_), text(longestText_), text(longestText_)};
        set.addNew();
        put(set, record);
        const bool there = records.count(keyBytes(record.name)) != 0;
        bool refused = false;
        try {
            set.update();
        } catch (const JetError& error) {
            REQUIRE(error.number() == jeterr::kDuplicateKey);
            refused = true;
        }
        REQUIRE(refused == there);
        records.emplace(keyBytes(record.name), record);
    }

    static void put(clsJetRecordset& set, const StressRecord& record)
    {
        set.setField(L"Filename", record.name);
        set.setField(L"Title", record.title);
        set.setField(L"Artist", record.title);
        set.setField(L"Album", record.comments);
        set.setField(L"Comments", record.comments);
    }

    void edit(clsJetRecordset& set, std::map<std::string, StressRecord>& records)
    {
        const std::wstring name = presentName(records);
        set.seek(L"=", name);
        REQUIRE(!set.noMatch());
        const bool rename = below(2) == 0;
        const StressRecord record{rename ? text(longestName_) : name, text(longestText_),
                                  text(longestText_)};
        const std::string from = keyBytes(name), to = keyBytes(record.name);
        set.edit();
        put(set, record);
        try {
            set.update();
        } catch (const JetError& error) {
            REQUIRE(error.number() == jeterr::kDuplicateKey);
            REQUIRE((from != to && records.count(to)));
            return;
        }
        records.erase(from);
        REQUIRE(records.emplace(to, record).second);
        REQUIRE(set.field(L"Title") == record.title);
    }

    void erase(clsJetRecordset& set, std::map<std::string, StressRecord>& records)
    {
        const std::wstring name = presentName(records);
        set.seek(L"=", name);
        REQUIRE(!set.noMatch());
        set.deleteRecord();
        const auto next = records.erase(records.find(keyBytes(name)));
        set.move(1);
        REQUIRE(set.eof() == (next == records.end()));
        if (!set.eof())
            REQUIRE(set.field(L"Filename") == next->second.name);
    }

    void lookUp(clsJetRecordset& set, const std::map<std::string, StressRecord>& records)
    {
        const std::wstring name = below(2) ? text(longestName_) : presentName(records);
        set.seek(L"=", name);
        const auto at = records.find(keyBytes(name));
        REQUIRE(set.noMatch() == (at == records.end()));
        if (!set.noMatch())
            REQUIRE(set.field(L"Comments") == at->second.comments);
        REQUIRE(set.recordCount() == static_cast<long>(records.size()));
    }

    void renameTable()
    {
        const std::wstring from = anyTable(), to = L"T" + std::to_wstring(below(50));
        if (model_.count(to))
            return;
        db_->renameTable(from, to);
        model_[to] = std::move(model_[from]);
        model_.erase(from);
    }

    void replaceTable()
    {
        if (model_.size() > 2) {
            const std::wstring table = anyTable();
            db_->deleteTable(table);
            model_.erase(table);
        } else {
            const std::wstring table = L"N" + std::to_wstring(below(1000000));
            db_->appendTable(descriptionTable(table));
            model_[table];
        }
    }

    void transaction()
    {
        const StressModel before = model_;
        db_->beginTrans();
        for (std::size_t i = below(40); i; --i)
            changeRecord(below(1000));
        if (below(2)) {
            db_->commitTrans();
        } else {
            db_->rollback();
            model_ = before;
        }
    }

    void compare()
    {
        JetContent wanted;
        for (const auto& [table, records] : model_) {
            auto& rows = wanted[table];
            for (const auto& [key, record] : records)
                rows.push_back({record.name, record.title, record.title, record.comments,
                                std::nullopt, record.comments, std::nullopt, std::nullopt});
        }
        db_->close();
        REQUIRE(readJetFile(files_, kStressPath) == wanted);
        open();
    }

    MemoryFiles files_;
    SystemRandom random_;
    std::size_t longestName_, longestText_;
    std::unique_ptr<clsJetDatabase> db_;
    StressModel model_;
};

} // namespace velora
