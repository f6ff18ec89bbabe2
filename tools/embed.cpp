// Turns files into a C++ source with a table of their bytes. Runs on the machine that builds.
//
//     embed OUTPUT NAME TYPE FILE [NAME TYPE FILE ...]
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

// Bytes as a string literal in octal, which a compiler reads many times faster than a
// list of numbers. Three digits always, so that what follows cannot join them.
void WriteLiteral(std::ostream& out, const std::string& bytes) {
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (i % 32 == 0) out << (i ? "\"\n    \"" : "\n    \"");
        const auto byte = static_cast<unsigned char>(bytes[i]);
        out << '\\' << char('0' + (byte >> 6)) << char('0' + (byte >> 3 & 7)) << char('0' + (byte & 7));
    }
    out << (bytes.empty() ? "\"\"" : "\"");
}

int Fail(const std::string& what, const std::string& file) {
    std::fprintf(stderr, "embed: %s %s\n", what.c_str(), file.c_str());
    return 1;
}

}  // namespace

int main(int count, char** words) {
    if (count < 2 || (count - 2) % 3 != 0) return Fail("wants OUTPUT and then NAME TYPE FILE, not", "this");
    std::ofstream out(words[1], std::ios::binary);
    out << "#include \"platform/system/embedded.h\"\n\nnamespace {\n\n";
    std::string table;
    for (int i = 2; i < count; i += 3) {
        std::ifstream in(words[i + 2], std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        if (!in.is_open() || bytes.empty()) return Fail("cannot read", words[i + 2]);
        const std::string variable = "Data" + std::to_string((i - 2) / 3);
        out << "constexpr char " << variable << "[] =";
        WriteLiteral(out, bytes);
        out << ";\n\n";
        table += std::string("    {\"") + words[i] + "\", \"" + words[i + 1] + "\", {" + variable + ", sizeof " +
                 variable + " - 1}},\n";
    }
    table += "    {},\n";  // an array has at least one element
    out << "constexpr EmbeddedFile Table[] = {\n"
        << table << "};\n\n}  // namespace\n\n"
        << "std::span<const EmbeddedFile> EmbeddedFiles() { return {Table, sizeof Table / sizeof Table[0] - 1}; }\n";
    out.close();
    return out ? 0 : Fail("cannot write", words[1]);
}
