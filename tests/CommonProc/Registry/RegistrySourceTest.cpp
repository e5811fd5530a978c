#include "CommonProc/Registry/RegistrySource.h"

#include "support/RegistryBuilder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace RedfishConfig;
using RegistryTest::RegistryBuilder;

namespace {

TEST(RegistrySource, IsSharedByEqualTextsAsLongAsItIsUsed)
{
    const std::string text = RegistryBuilder().Attribute("A", "String").Text();
    auto first = RegistrySource::Of(text);
    const auto second = RegistrySource::Of(std::string(text));
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->Read(), second->Read());
    EXPECT_NE(RegistrySource::Of(text + " "), first);

    const std::weak_ptr<RegistrySource> seen = first;
    first.reset();
    EXPECT_FALSE(seen.expired());
    EXPECT_EQ(RegistrySource::Of(text), second);
}

TEST(RegistrySource, IsLetGoWithTheLastUser)
{
    const std::string text = RegistryBuilder().Attribute("A", "String").Text();
    std::weak_ptr<const Registry> registry;
    {
        const auto source = RegistrySource::Of(text);
        registry = source->Read();
        EXPECT_FALSE(registry.expired());
    }
    EXPECT_TRUE(registry.expired());
    EXPECT_EQ(RegistrySource::Of(text)->Read()->Attributes().size(), 1u);
}

/** Long texts that differ in one byte, wherever it is. */
TEST(RegistrySource, TellsTextsApartThatDifferInOneByte)
{
    const std::string text(10000, ' ');
    std::vector<std::shared_ptr<RegistrySource>> sources{RegistrySource::Of(text)};
    for (std::size_t place = 0; place < text.size(); place += 97) {
        std::string other = text;
        other[place] = '\t';
        sources.push_back(RegistrySource::Of(other));
        ASSERT_NE(sources.back(), sources.front()) << place;
        ASSERT_EQ(sources.back(), RegistrySource::Of(other)) << place;
    }
}

TEST(RegistrySource, SaysEachTimeThatATextCannotBeRead)
{
    const auto source = RegistrySource::Of("no JSON");
    EXPECT_THROW(source->Read(), std::exception);
    EXPECT_THROW(source->Read(), std::exception);
}

TEST(RegistrySource, IsReadOnceByManyThreads)
{
    const std::string text = RegistryBuilder().Attribute("A", "String").Text();
    constexpr std::size_t threads = 8;
    const auto kept = RegistrySource::Of(text);
    std::vector<std::shared_ptr<const Registry>> registries(threads);
    std::vector<std::thread> running;
    for (std::size_t number = 0; number < threads; ++number) {
        running.emplace_back([&, number] {
            for (int round = 0; round < 100; ++round) {
                RegistrySource::Of(text + std::string(number, ' ')); // comes and goes beside the others
                registries[number] = RegistrySource::Of(text)->Read();
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    for (const auto& registry : registries) {
        EXPECT_EQ(registry, kept->Read());
    }
}

} // namespace
