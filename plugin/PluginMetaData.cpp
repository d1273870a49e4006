#include "plugin/ZorFFCUtility.h"

#include <cstddef>
#include <cstdint>

// The metadata that Qt's loader reads from the library's file without running code: one object in binary
// JSON, the form of Qt 5 up to 5.14. It is laid by hand because newer moc versions write CBOR with other
// entries, and hosts look for exactly these five.
namespace {

/// Type codes of binary JSON.
enum JsonType : std::uint32_t
{
    JsonBool = 1,
    JsonDouble = 2,
    JsonString = 3,
    JsonObject = 5
};

constexpr std::uint32_t JsonLatin1OrInteger = 8; ///< the string is Latin-1, or the number is in the word
constexpr std::uint32_t JsonLatin1Key = 16;

/// The first word of an entry. `value` is the number or truth value itself, else the place of the entry's
/// body, counted from the object.
constexpr std::uint32_t jsonEntry(JsonType type, std::uint32_t flags, std::size_t value)
{
    return type | flags | JsonLatin1Key | static_cast<std::uint32_t>(value) << 5;
}

/// A Latin-1 text after its length, padded with zeros; the sizes below keep every word on a multiple of 4.
template <std::size_t Room> struct JsonText
{
    std::uint16_t length;
    char text[Room];
};

struct JsonObjectHead
{
    std::uint32_t size;          ///< bytes of the whole object
    std::uint32_t kindAndLength; ///< bit 0: an object and not an array; above it the number of entries
    std::uint32_t tableOffset;   ///< where the table of entry offsets begins
};

struct Object
{
    JsonObjectHead head;

    std::uint32_t iidEntry;
    JsonText<6> iidKey;
    JsonText<46> iid;

    std::uint32_t classNameEntry;
    JsonText<10> classNameKey;
    JsonText<14> className;

    std::uint32_t versionEntry;
    JsonText<10> versionKey;

    std::uint32_t debugEntry;
    JsonText<6> debugKey;

    std::uint32_t metaDataEntry;
    JsonText<10> metaDataKey;
    JsonObjectHead metaData;

    std::uint32_t table[5]; ///< offsets of the entries, sorted by key: for the loader's binary search
};

struct Block
{
    char signature[12]; ///< what the loader looks for; the two blanks mean binary JSON
    char tag[4];
    std::uint32_t formatVersion;
    Object object;
};

static_assert(sizeof(Block) == 20 + sizeof(Object) && sizeof(Object) == 180, "the block has no gaps");

constexpr std::uint32_t BuiltForQt = 0x050903;

QT_PLUGIN_METADATA_SECTION
const Block block = {
    {'Q', 'T', 'M', 'E', 'T', 'A', 'D', 'A', 'T', 'A', ' ', ' '},
    {'q', 'b', 'j', 's'},
    1,
    {
        {sizeof(Object), 1 | 5 << 1, offsetof(Object, table)},
        jsonEntry(JsonString, JsonLatin1OrInteger, offsetof(Object, iid)),
        {3, "IID"},
        {sizeof ZBKInterfacePlugIn_iid - 1, ZBKInterfacePlugIn_iid},
        jsonEntry(JsonString, JsonLatin1OrInteger, offsetof(Object, className)),
        {9, "className"},
        {13, "ZorFFCUtility"},
        jsonEntry(JsonDouble, JsonLatin1OrInteger, BuiltForQt),
        {7, "version"},
        jsonEntry(JsonBool, 0, false),
        {5, "debug"},
        jsonEntry(JsonObject, 0, offsetof(Object, metaData)),
        {8, "MetaData"},
        {sizeof(JsonObjectHead), 1, 0},
        {offsetof(Object, iidEntry), offsetof(Object, metaDataEntry), offsetof(Object, classNameEntry),
         offsetof(Object, debugEntry), offsetof(Object, versionEntry)},
    },
};

// The name that Qt's export macro takes the metadata from.
constexpr const Block* qt_pluginMetaData = &block;

} // namespace

QT_MOC_EXPORT_PLUGIN(ZorFFCUtility, ZorFFCUtility)
