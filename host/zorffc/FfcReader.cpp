#include "host/zorffc/FfcFile.h"

#include "host/frames/FileBytes.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/Numbers.h"

#include <string_view>

namespace zor {

namespace {

/// Far above the tables of the largest frame (2 x MaxFrameSide gains), far below what would hurt to hold.
constexpr std::uint64_t LargestFile = 16u << 20;

class Reader
{
public:
    explicit Reader(const std::string& name)
        : m_name(name)
    {
    }

    FfcFile read(std::string_view text)
    {
        while (!text.empty()) {
            const std::size_t end = text.find('\n');
            ++m_line;
            // The last line, too, has an end: without it nobody can know 27 from the beginning of 273.
            if (end == std::string_view::npos)
                fail("the line has no end, so the file may be cut short");
            std::string_view line = text.substr(0, end);
            text.remove_prefix(end + 1);
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            if (!line.empty() && line.substr(0, 2) != "--")
                take(line);
        }
        if (m_section != Section::Rows)
            failWhole("has no \":FFC_Y start,\" section");
        if (m_file.columns.empty() || m_file.rows.empty())
            failWhole("has a table without entries");
        return std::move(m_file);
    }

private:
    enum class Section
    {
        None,
        Header,
        Columns,
        Rows
    };

    void take(std::string_view line)
    {
        if (line == ":Header,")
            enter(Section::None, Section::Header);
        else if (line == ":Table,")
            enterTable();
        else if (line == ":FFC_Y start,")
            enter(Section::Columns, Section::Rows);
        else if (m_section == Section::Header)
            takeHeader(line);
        else if (m_section == Section::Columns)
            takeEntry(line, m_file.columns);
        else if (m_section == Section::Rows)
            takeEntry(line, m_file.rows);
        else
            fail("text in front of \":Header,\"");
    }

    void enter(Section before, Section section)
    {
        if (m_section != before)
            fail("a section out of its order; it goes :Header, then :Table, then :FFC_Y start");
        m_section = section;
    }

    void enterTable()
    {
        enter(Section::Header, Section::Columns);
        if (m_headerLines != 3)
            fail("the table after " + std::to_string(m_headerLines) +
                 " header lines; there are title, camera and date");
    }

    void takeHeader(std::string_view line)
    {
        if (line.back() == ',')
            line.remove_suffix(1);
        std::string* const fields[] = {&m_file.title, &m_file.camera, &m_file.date};
        if (m_headerLines == 3)
            fail("a fourth header line; there are title, camera and date");
        constexpr std::string_view dateWord = "date ";
        if (m_headerLines == 2 && line.substr(0, dateWord.size()) == dateWord)
            line.remove_prefix(dateWord.size());
        *fields[m_headerLines++] = line;
    }

    void takeEntry(std::string_view line, std::vector<std::int32_t>& table)
    {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos)
            fail("no entry; one reads \"number,value\"");
        const auto number = parseWhole(line.substr(0, comma));
        const auto value = parseEntry(line.substr(comma + 1));
        if (!number || !value)
            fail("no entry; one reads \"number,value\" in decimal digits");
        if (*number != table.size() + 1)
            fail("entry " + std::to_string(*number) + " where entry " + std::to_string(table.size() + 1) +
                 " belongs");
        table.push_back(*value);
    }

    [[noreturn]] void fail(const std::string& problem) const
    {
        failWhole("line " + std::to_string(m_line) + ": " + problem);
    }

    [[noreturn]] void failWhole(const std::string& problem) const
    {
        throw CommandError(m_name + ": " + problem + "; use a file that was written by compute");
    }

    const std::string& m_name;
    FfcFile m_file;
    Section m_section = Section::None;
    std::size_t m_line = 0;
    std::size_t m_headerLines = 0;
};

} // namespace

FfcFile parseFfcText(const std::string& name, const std::string& text)
{
    return Reader(name).read(text);
}

FfcFile readFfcFile(const std::string& path)
{
    if (path.empty())
        throw CommandError("--ffc: the file name is empty; name a coefficient file");
    if (fileSize(path) > LargestFile)
        throw CommandError(path + ": is larger than any coefficient file; check the name");
    const std::vector<std::uint8_t> bytes = readBytes(path);
    return parseFfcText(path, std::string(bytes.begin(), bytes.end()));
}

} // namespace zor
