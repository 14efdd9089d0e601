#include <support/TemporaryDirectory.h>
#include <tavik/misc/Property.h>

#include <benchmark/benchmark.h>
#include <tinyxml.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

// A property file of 10,000 keys, and questions to the store.

namespace {

using Tavik::Misc::Property;

constexpr int Groups = 100;
constexpr int KeysOfGroup = 100;
constexpr benchmark::IterationCount Keys = 10000;

std::string twoDigits(int number)
{
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string keyOf(int group, int index)
{
    return "group" + twoDigits(group) + ".setting" + twoDigits(index);
}

std::string writeFile(const std::string& path)
{
    std::ofstream file(path);
    file << "<Properties>\n";
    for (int group = 0; group < Groups; ++group) {
        file << "    <group" << twoDigits(group) << ">\n";
        for (int i = 0; i < KeysOfGroup; ++i) {
            file << "        <Property key=\"setting" << twoDigits(i) << "\" value=\"" << group << '.' << i
                 << "\" />\n";
        }
        file << "    </group" << twoDigits(group) << ">\n";
    }
    file << "</Properties>\n";
    return path;
}

const std::string& propertyFile()
{
    static const Tavik::Support::TemporaryDirectory directory;
    static const std::string path = writeFile(directory.path() + "/properties.xml");
    return path;
}

/// Sends what is printed to /dev/null as long as it lives.
class Silence
{
public:
    Silence()
    {
        std::fflush(stdout);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        close(nowhere);
    }
    ~Silence()
    {
        std::fflush(stdout);
        dup2(mStdout, STDOUT_FILENO);
        close(mStdout);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

private:
    int mStdout = dup(STDOUT_FILENO);
};

/// Calls load with the same file again and again.
template <typename Load>
void overFile(benchmark::State& state, Load load)
{
    const std::string& path = propertyFile();
    const Silence silence;
    while (state.KeepRunning()) {
        load(path);
    }
}

void loadOurs(benchmark::State& state)
{
    overFile(state, [](const std::string& path) { Property::instance().readXmlFile(path); });
}

/// Elements and attributes in memory and freed again, nothing stored or printed.
void loadTinyXml(benchmark::State& state)
{
    overFile(state, [](const std::string& path) {
        TiXmlDocument document;
        benchmark::DoNotOptimize(document.LoadFile(path));
    });
}

/// The text between the next two quotes.
std::string_view quoted(std::string_view& text)
{
    text.remove_prefix(text.find('"') + 1);
    const std::string_view inside = text.substr(0, text.find('"'));
    text.remove_prefix(inside.size() + 1);
    return inside;
}

/// Lines of exactly the form that the file has, into a hash table, each printed.
void loadLimit(benchmark::State& state)
{
    overFile(state, [](const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(file), {}};
        std::string_view text = content;
        std::unordered_map<std::string, std::string> values;
        std::string group;
        for (std::size_t open = text.find('<'); open != std::string_view::npos; open = text.find('<')) {
            text.remove_prefix(open + 1);
            const std::string_view name = text.substr(0, text.find_first_of(" >"));
            if (name == "Property") {
                const std::string_view key = quoted(text);
                std::string full = group;
                full.append(key);
                const std::string_view value = quoted(text);
                const auto added = values.emplace(std::move(full), value).first;
                std::printf("Property <%s> <%s>\n", added->first.c_str(), added->second.c_str());
            } else {
                group.assign(name).append(1, '.');
            }
        }
        benchmark::DoNotOptimize(values.size());
    });
}

/// Every key once a round, in an order in which no two neighbours follow each other.
template <typename Get>
void overKeys(benchmark::State& state, Get get)
{
    std::vector<std::string> keys;
    for (int i = 0; i < Groups * KeysOfGroup; ++i) {
        const int scattered = i * 7919 % (Groups * KeysOfGroup);
        keys.push_back(keyOf(scattered / KeysOfGroup, scattered % KeysOfGroup));
    }
    double sum = 0.0;
    while (state.KeepRunningBatch(Keys)) {
        for (const std::string& key : keys) {
            sum += get(key);
        }
    }
    benchmark::DoNotOptimize(sum);
}

template <typename Store>
void fill(Store store)
{
    for (int group = 0; group < Groups; ++group) {
        for (int i = 0; i < KeysOfGroup; ++i) {
            store(keyOf(group, i), group + i / 100.0);
        }
    }
}

/// Answers of one of the getters. The store holds numbers of all keys.
template <typename Get>
void getOurs(benchmark::State& state, Get get)
{
    Property& properties = Property::instance();
    fill([&](const std::string& key, double value) { properties.setDouble(key, value); });
    overKeys(state, [&](const std::string& key) { return get(properties, key); });
}

void getDoubleOurs(benchmark::State& state)
{
    getOurs(state, [](const Property& properties, const std::string& key) { return properties.getDouble(key, 0.0); });
}

void getIntOurs(benchmark::State& state)
{
    getOurs(state, [](const Property& properties, const std::string& key) { return properties.getInt(key, 0); });
}

void getSwitchOurs(benchmark::State& state)
{
    getOurs(state, [](const Property& properties, const std::string& key) { return properties.getSwitch(key, true); });
}

/// One hash look-up.
void getLimit(benchmark::State& state)
{
    std::unordered_map<std::string, double> values;
    fill([&](const std::string& key, double value) { values[key] = value; });
    overKeys(state, [&](const std::string& key) { return values.find(key)->second; });
}

} // namespace

// The first load fills the empty store, later ones replace its values. It pays for memory that the process has not yet
// had, so compare these two rows from two runs: --benchmark_filter=first_load_10000_keys/ours, .../peer_tinyxml.
BENCHMARK(loadOurs)->Name("first_load_10000_keys/ours")->Iterations(1);
BENCHMARK(loadTinyXml)->Name("first_load_10000_keys/peer_tinyxml")->Iterations(1);
BENCHMARK(loadOurs)->Name("load_10000_keys/ours");
BENCHMARK(loadLimit)->Name("load_10000_keys/limit");
BENCHMARK(loadTinyXml)->Name("load_10000_keys/peer_tinyxml");
BENCHMARK(getDoubleOurs)->Name("get_double/ours");
BENCHMARK(getIntOurs)->Name("get_int/ours");
BENCHMARK(getSwitchOurs)->Name("get_switch/ours");
BENCHMARK(getLimit)->Name("get_double/limit");
