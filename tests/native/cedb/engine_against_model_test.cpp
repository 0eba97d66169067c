// Random operations on a volume and on its model; every answer must be the same.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>

#include "tests/native/cedb/engine_model.h"
#include "tests/native/cedb/volume_file.h"
#include "tests/native/fuzz_inputs.h"

using namespace cedb;

namespace {

// Some twenty seconds on a quiet machine; a million take five times that.
constexpr std::uint64_t kOperations = 200'000;
constexpr int kRecordsAtMost = 60;

constexpr PropertyId kIds[] = {Id(0x65, kTypeText),  Id(0x66, kTypeText),   Id(0x67, kTypeUInt32),
                               Id(0x68, kTypeInt16), Id(0x69, kTypeInt32),  Id(0x6A, kTypeUInt16),
                               Id(0x6B, kTypeBool),  Id(0x6C, kTypeDouble), Id(0x6D, kTypeFileTime),
                               Id(0x6E, kTypeBlob)};

// KORA_SEED repeats a run.
std::uint64_t Seed() {
    const char* text = std::getenv("KORA_SEED");
    if (text != nullptr) return std::strtoull(text, nullptr, 0);
    return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

class Fuzzer {
  public:
    explicit Fuzzer(std::uint64_t seed) : random_(seed) {
        EXPECT_EQ(CVolume::Create(file_.Path(), model_.lcid, collator_), Status::Ok);
        Reopen();
    }

    void Step() {
        using Operation = void (Fuzzer::*)();
        struct Row {
            unsigned weight;
            Operation operation;
        };
        static const Row kOperationsByWeight[] = {
            {24, &Fuzzer::Seek},   {30, &Fuzzer::Read},          {14, &Fuzzer::Insert},
            {10, &Fuzzer::Update}, {8, &Fuzzer::Delete},         {8, &Fuzzer::OpenCursor},
            {2, &Fuzzer::Count},   {1, &Fuzzer::CreateDatabase}, {1, &Fuzzer::RareOnes},
        };
        unsigned ticket = Below(98);
        for (const Row& row : kOperationsByWeight) {
            if (ticket < row.weight) return (this->*row.operation)();
            ticket -= row.weight;
        }
    }

    void CompareAll() {
        std::vector<DatabaseInfo> databases;
        ASSERT_EQ(volume_->ListDatabases(&databases), Status::Ok);
        ASSERT_EQ(databases.size(), model_.databases.size());
        for (const DatabaseInfo& info : databases) {
            CCursor cursor(*volume_, info, std::nullopt, true);
            const EngineModel::Database& expected = model_.databases.at(info.oid);
            EXPECT_EQ(info.name, expected.info.name);
            EXPECT_EQ(info.orders, expected.info.orders);
            for (const auto& [oid, record] : expected.records) {
                Oid found = 0;
                Record read;
                ASSERT_EQ(cursor.Look(&found, &read), Status::Ok);
                cursor.HasBeenRead();
                EXPECT_EQ(found, oid);
                EXPECT_EQ(read, record);
            }
        }
    }

  private:
    struct Pair {
        CCursor real;
        CursorModel model;
    };

    unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    bool Chance(unsigned percent) { return Below(100) < percent; }

    void Reopen() {
        cursors_.clear();
        neighbour_.reset();
        volume_.reset();
        volume_ = std::make_unique<CVolume>(collator_);
        ASSERT_EQ(volume_->Open(file_.Path()), Status::Ok);
        neighbour_ = std::make_unique<CVolume>(collator_);
        ASSERT_EQ(neighbour_->Open(file_.Path()), Status::Ok);
    }

    // Who makes a change: now and then another connection, as another process has it.
    CVolume& AnyWriter() { return Chance(15) ? *neighbour_ : *volume_; }

    EngineModel::Database* AnyDatabase() {
        if (model_.databases.empty()) return nullptr;
        auto at = model_.databases.begin();
        std::advance(at, Below(static_cast<unsigned>(model_.databases.size())));
        return &at->second;
    }

    Pair* AnyCursor() {
        return cursors_.empty() ? nullptr : cursors_[Below(static_cast<unsigned>(cursors_.size()))].get();
    }

    // Mostly a number that exists, now and then one that does not.
    Oid AnyOid(const EngineModel::Database& database) {
        if (database.records.empty() || Chance(5)) return 1 + Below(model_.nextOid + 3);
        auto at = database.records.begin();
        std::advance(at, Below(static_cast<unsigned>(database.records.size())));
        return at->first;
    }

    // Few different values, so that equal keys are common.
    Property AnyValue(PropertyId id) {
        static const std::u16string kTexts[] = {u"",   u"a",      u"A",      u"ab",     u"b", u"B a",
                                                u"zz", u"\u00E9", u"\uFFFF", u"\u0100", u"0"};
        static const std::int64_t kNumbers[] = {0, 1, -1, 2, 8750, 10800, -32768, 32767};
        static const double kDoubles[] = {0.0, 1.5, -1.5, 1e300, -1e300, 87.5};
        Property value;
        value.id = id;
        const std::uint16_t type = TypeOf(id);
        const std::int64_t number = kNumbers[Below(std::size(kNumbers))];
        if (type == kTypeText) value.text = kTexts[Below(std::size(kTexts))];
        if (type == kTypeBlob) value.bytes.assign(Below(200), static_cast<char>(Below(256)));
        if (type == kTypeInt16 || type == kTypeInt32) value.number = static_cast<std::uint64_t>(number);
        if (type == kTypeUInt16) value.number = static_cast<std::uint16_t>(number);
        if (type == kTypeUInt32) value.number = static_cast<std::uint32_t>(number);
        if (type == kTypeFileTime) value.number = random_() >> Below(60);
        if (type == kTypeBool) value.number = Below(2);
        if (type == kTypeDouble) std::memcpy(&value.number, &kDoubles[Below(std::size(kDoubles))], 8);
        return value;
    }

    std::vector<PropertyChange> AnyChanges() {
        std::vector<PropertyChange> changes;
        const unsigned count = 1 + Below(5);
        for (unsigned i = 0; i < count; ++i)
            changes.push_back({AnyValue(kIds[Below(std::size(kIds))]), Chance(8)});
        return changes;
    }

    SortOrder AnyOrder() {
        static const std::uint32_t kFlags[] = {kSortDescending, kSortCaseInsensitive, kSortUnknownFirst};
        SortOrder order;
        order.unique = Chance(8);
        const unsigned columns = 1 + Below(3);
        for (unsigned i = 0; i < columns; ++i) {
            SortColumn column{kIds[Below(std::size(kIds) - 1)], Chance(4) ? kSortNonNull : 0U};
            for (const std::uint32_t flag : kFlags) column.flags |= Chance(40) ? flag : 0;
            order.columns.push_back(column);
            if (!IsValid(order)) order.columns.pop_back();
        }
        return order;
    }

    void CreateDatabase() {
        DatabaseInfo info;
        info.name = u"db";
        info.name.push_back(static_cast<char16_t>(u'0' + Below(6)));
        const unsigned orders = Below(5);
        for (unsigned i = 0; i < orders; ++i) info.orders.push_back(AnyOrder());
        Oid expected = 0;
        Oid oid = 0;
        const Status status = model_.CreateDatabase(info, &expected);
        ASSERT_EQ(volume_->CreateDatabase(info, &oid), status);
        if (status == Status::Ok) ASSERT_EQ(oid, expected);
    }

    void OpenCursor() {
        const EngineModel::Database* database = AnyDatabase();
        if (database == nullptr) return;
        std::optional<std::size_t> sort;
        const auto orders = static_cast<unsigned>(database->info.orders.size());
        if (orders != 0 && Chance(85)) sort = Below(orders);
        const bool autoIncrement = Chance(60);
        if (cursors_.size() >= 6) cursors_.erase(cursors_.begin());
        cursors_.push_back(
            std::make_unique<Pair>(Pair{CCursor(*volume_, database->info, sort, autoIncrement),
                                        CursorModel(model_, database->info.oid, sort, autoIncrement)}));
        sorts_[cursors_.back().get()] = sort;
    }

    SeekTarget AnyTarget(Pair& pair) {
        const EngineModel::Database& database = model_.databases.at(pair.model.Database());
        SeekTarget target;
        const std::optional<std::size_t> sort = sorts_[&pair];
        target.kind = static_cast<cedb::Seek>(Below(sort ? 10 : 4));
        if (target.kind == cedb::Seek::Number) target.number = AnyOid(database);
        if (target.kind == cedb::Seek::Beginning || target.kind == cedb::Seek::End) target.number = Below(12);
        if (target.kind == cedb::Seek::Current) target.number = static_cast<std::int64_t>(Below(9)) - 4;
        if (!sort) return target;
        const SortOrder& order = database.info.orders[*sort];
        const std::size_t columns = 1 + Below(static_cast<unsigned>(order.columns.size()));
        for (std::size_t i = 0; i < columns; ++i) target.values.push_back(AnyValue(order.columns[i].id));
        return target;
    }

    void Seek() {
        Pair* pair = AnyCursor();
        if (pair == nullptr) return;
        const SeekTarget target = AnyTarget(*pair);
        Oid expected = 0;
        Oid oid = 0;
        std::uint32_t expectedIndex = 0;
        std::uint32_t index = 0;
        const Status status = pair->model.SeekTo(target, &expected, &expectedIndex);
        ASSERT_EQ(pair->real.SeekTo(target, &oid, &index), status) << static_cast<int>(target.kind);
        ASSERT_EQ(oid, expected) << static_cast<int>(target.kind);
        if (status == Status::Ok) ASSERT_EQ(index, expectedIndex);
    }

    void Read() {
        Pair* pair = AnyCursor();
        if (pair == nullptr) return;
        Oid expected = 0;
        Oid oid = 0;
        Record expectedRecord;
        Record record;
        const Status status = pair->model.Look(&expected, &expectedRecord);
        ASSERT_EQ(pair->real.Look(&oid, &record), status);
        ASSERT_EQ(oid, expected);
        if (status != Status::Ok) return;
        ASSERT_EQ(record, expectedRecord);
        pair->model.HasBeenRead();
        pair->real.HasBeenRead();
    }

    void Insert() {
        const EngineModel::Database* database = AnyDatabase();
        if (database == nullptr || database->records.size() >= kRecordsAtMost) return;
        const std::vector<PropertyChange> changes = AnyChanges();
        Oid expected = 0;
        Oid oid = 0;
        const Status status = model_.Insert(database->info.oid, changes, &expected);
        ASSERT_EQ(AnyWriter().InsertRecord(database->info, changes, &oid), status);
        if (status == Status::Ok) ASSERT_EQ(oid, expected);
    }

    void Update() {
        const EngineModel::Database* database = AnyDatabase();
        if (database == nullptr) return;
        const std::vector<PropertyChange> changes = AnyChanges();
        const Oid oid = AnyOid(*database);
        const Status status = model_.Update(database->info.oid, oid, changes);
        ASSERT_EQ(AnyWriter().UpdateRecord(database->info, oid, changes), status);
    }

    void Delete() {
        Pair* pair = AnyCursor();
        if (pair == nullptr) return;
        const EngineModel::Database& database = model_.databases.at(pair->model.Database());
        const Oid oid = AnyOid(database);
        const Status status = model_.Delete(database.info.oid, oid);
        CVolume& writer = AnyWriter();
        ASSERT_EQ(writer.DeleteRecord(database.info, oid), status);
        if (status != Status::Ok || &writer != volume_.get()) return;
        pair->model.HasBeenDeleted(oid);
        pair->real.HasBeenDeleted(oid);
    }

    void Count() {
        const EngineModel::Database* database = AnyDatabase();
        if (database == nullptr) return;
        std::uint32_t count = 0;
        ASSERT_EQ(volume_->CountRecords(database->info.oid, &count), Status::Ok);
        ASSERT_EQ(count, database->records.size());
    }

    void RareOnes() {
        CompareAll();
        const unsigned which = Below(20);
        if (which < 6) Reopen();
        if (which == 6) {
            const EngineModel::Database* database = AnyDatabase();
            if (database == nullptr) return;
            const Oid oid = database->info.oid;
            cursors_.clear();
            ASSERT_EQ(volume_->DeleteDatabase(oid), Status::Ok);
            model_.databases.erase(oid);
        }
        if (which == 7) {
            cursors_.clear();
            model_.lcid = 1 + Below(4);
            ASSERT_EQ(volume_->ChangeLocale(model_.lcid), Status::Ok);
        }
    }

    std::mt19937_64 random_;
    PlainCollator collator_;
    VolumeFile file_;
    EngineModel model_;
    std::unique_ptr<CVolume> volume_;
    std::unique_ptr<CVolume> neighbour_;
    std::vector<std::unique_ptr<Pair>> cursors_;
    std::map<const Pair*, std::optional<std::size_t>> sorts_;
};

}  // namespace

TEST(EngineAgainstModel, RandomOperationsAlwaysGiveTheModelsAnswers) {
    const std::uint64_t seed = Seed();
    const std::uint64_t operations = test::FuzzInputs(kOperations);
    std::printf("seed %llu, %llu operations\n", static_cast<unsigned long long>(seed),
                static_cast<unsigned long long>(operations));
    Fuzzer fuzzer(seed);
    for (std::uint64_t i = 0; i < operations; ++i) {
        fuzzer.Step();
        if (testing::Test::HasFailure())
            FAIL() << "at operation " << i << " of the run with KORA_SEED=" << seed;
    }
    fuzzer.CompareAll();
}
