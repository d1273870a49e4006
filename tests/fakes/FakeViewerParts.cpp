#include "tests/fakes/FakeViewerParts.h"

#include "tests/fakes/FakeViewer.h"

namespace {

class FakeSettings final : public DisplaySettings
{
public:
    void reserved0() override {}
    void reserved1() override {}
    void reserved2() override {}
    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    int setText(const char* key, const char* value) override
    {
        const std::string text = std::string(key) + "=" + value;
        FakeViewer::calls().push_back({"setText", false, {}, {}, nullptr, nullptr, text});
        return 1;
    }
    void reserved10() override {}
    void reserved11() override {}
    void reserved12() override {}
    bool getDouble(const char* key, double* value) override
    {
        const auto found = FakeViewer::script().settings.find(key);
        if (found == FakeViewer::script().settings.end())
            return false;
        *value = found->second;
        return true;
    }
    void reserved14() override {}
    void reserved15() override {}
    int run(const char* action) override
    {
        FakeViewer::calls().push_back({"run", false, {}, {}, nullptr, nullptr, action});
        return 1;
    }
};

class FakeStageItem final : public DisplayStageItem
{
public:
    void reserved0() override {}
    void reserved1() override {}
    void reserved2() override {}
    void reserved3() override {}
    void reserved4() override {}
    std::int64_t value() override { return FakeViewer::script().stageItems.at(name); }
    void reserved6() override {}
    void setValue(std::uint8_t value) override
    {
        const std::string text = name + "=" + std::to_string(value);
        FakeViewer::calls().push_back({"setValue", false, {}, {}, nullptr, nullptr, text});
    }

    std::string name;
};

class FakeStage final : public DisplayStage
{
public:
    void reserved0() override {}
    void reserved1() override {}
    DisplayStageItem* find(const char* name) override
    {
        if (!FakeViewer::script().stageItems.count(name))
            return nullptr;
        item.name = name;
        return &item;
    }
    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    void reserved9() override {}
    std::int64_t value() override { return FakeViewer::script().stageValue; }
    _ZorImage* image(std::uint8_t which) override
    {
        return which == 0 ? FakeViewer::script().stageImage : nullptr;
    }

private:
    FakeStageItem item;
};

} // namespace

DisplaySettings& fakeSettings()
{
    static FakeSettings settings;
    return settings;
}

DisplayStage& fakeStage()
{
    static FakeStage stage;
    return stage;
}
