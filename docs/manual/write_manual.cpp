// Writes the scripting manual: pages from fragments, the reference from the tables that register
// what scripts can call. write_manual FRAGMENTS IMAGES STYLE OUTPUT
#include <cmark-gfm-core-extensions.h>
#include <cmark-gfm.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "editor/assist/manual_place.h"
#include "module/families.h"

namespace fs = std::filesystem;

namespace {

struct Page {
    std::string file;
    std::string title;
    std::string body;
    bool reference = false;
    std::vector<std::string> names = {};  ///< of its functions, each once and each an anchor
};

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '&')
            result += "&amp;";
        else if (c == '<')
            result += "&lt;";
        else if (c == '>')
            result += "&gt;";
        else
            result += c;
    }
    return result;
}

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    if (!file.write(text.data(), static_cast<std::streamsize>(text.size())))
        throw std::runtime_error("cannot write " + path.string());
}

/// "StrFind" of "int StrFind( string &in, string &in )".
std::string nameIn(const std::string& declaration) {
    const auto end = declaration.find_last_not_of(' ', declaration.find('(') - 1) + 1;
    auto begin = end;
    while (begin > 0 && (std::isalnum(static_cast<unsigned char>(declaration[begin - 1])) ||
                         declaration[begin - 1] == '_'))
        --begin;
    return declaration.substr(begin, end - begin);
}

/// Operators are not looked up by name.
bool isListed(const std::string& name) {
    return name.rfind("op", 0) != 0;
}

void appendRow(Page& page, const korvant::FunctionRow& row) {
    const std::string name = nameIn(row.declaration);
    const bool isFirst = std::find(page.names.begin(), page.names.end(), name) == page.names.end();
    if (isFirst) page.names.push_back(name);
    page.body += (isFirst ? "<h3 id=\"" + name + "\">" : std::string("<h3>")) +
                 escaped(row.declaration) + "</h3>\n<p>" + escaped(row.help) + "</p>\n";
    if (*row.example) page.body += "<pre><code>" + escaped(row.example) + "</code></pre>\n";
    page.body += *row.failure ? "<p class=\"fails\">" + escaped(row.failure) + "</p>\n"
                              : "<p class=\"sure\">It cannot fail.</p>\n";
}

/// Families of one title share a page.
std::vector<Page> referencePages() {
    std::vector<Page> pages;
    for (const auto& family : korvant::allFamilies()) {
        auto page = std::find_if(pages.begin(), pages.end(),
                                 [&](const Page& p) { return p.title == family.title; });
        if (page == pages.end()) {
            const std::string title = family.title;
            pages.push_back({"ref-" + korvant::manualSlug(title) + ".html", title,
                             "<h1>" + escaped(title) + "</h1>\n", true});
            page = pages.end() - 1;
        }
        for (const auto& row : family.rows) appendRow(*page, row);
    }
    return pages;
}

/// Markdown with tables as HTML.
std::string rendered(const std::string& markdown) {
    cmark_gfm_core_extensions_ensure_registered();
    cmark_parser* parser = cmark_parser_new(CMARK_OPT_DEFAULT);
    cmark_parser_attach_syntax_extension(parser, cmark_find_syntax_extension("table"));
    cmark_parser_feed(parser, markdown.data(), markdown.size());
    cmark_node* root = cmark_parser_finish(parser);
    char* html =
        cmark_render_html(root, CMARK_OPT_DEFAULT, cmark_parser_get_syntax_extensions(parser));
    std::string result = html;
    std::free(html);
    cmark_node_free(root);
    cmark_parser_free(parser);
    return result;
}

std::string titleOf(const std::string& body) {
    const auto start = body.find("<h1>"), end = body.find("</h1>");
    return start == std::string::npos ? "" : body.substr(start + 4, end - start - 4);
}

/// "@IMAGE file caption@" becomes a figure where the picture exists and nothing where not.
std::string withImages(std::string body, const fs::path& images) {
    for (std::size_t at = 0; (at = body.find("@IMAGE ", at)) != std::string::npos;) {
        const auto end = body.find('@', at + 1), blank = body.find(' ', at + 7);
        const std::string name = body.substr(at + 7, blank - at - 7);
        const std::string caption = body.substr(blank + 1, end - blank - 1);
        const std::string figure =
            fs::exists(images / name)
                ? "<p><img src=\"images/" + name + "\" alt=\"" + escaped(caption) + "\"></p>"
                : "";
        body.replace(at, end + 1 - at, figure);
    }
    return body;
}

std::string contents(const std::vector<Page>& pages) {
    std::string html = "<table>\n";
    for (const auto& page : pages) {
        if (!page.reference) continue;
        html += "<tr><td><a href=\"" + page.file + "\">" + escaped(page.title) + "</a></td><td>";
        for (const std::string& name : page.names)
            if (isListed(name))
                html += "<a href=\"" + page.file + "#" + name + "\">" + name + "</a> \n";
        html += "</td></tr>\n";
    }
    return html + "</table>\n";
}

std::string navigation(const std::vector<Page>& pages, const Page& here) {
    std::string html = "<nav><a href=\"index.html\">Contents</a>\n";
    for (const bool reference : {false, true}) {
        html += reference ? "<b>Reference</b>\n" : "<b>Guide</b>\n";
        for (const auto& page : pages)
            if (page.reference == reference && page.file != "index.html")
                html += "<a href=\"" + page.file + "\"" +
                        (page.file == here.file ? " class=\"here\"" : "") + ">" +
                        escaped(page.title) + "</a>\n";
    }
    return html + "</nav>\n";
}

std::string document(const std::vector<Page>& pages, const Page& page) {
    return "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" +
           escaped(page.title) +
           "</title>\n<link rel=\"stylesheet\" href=\"manual.css\"></head>\n<body><div "
           "class=\"frame\">\n" +
           navigation(pages, page) + "<main>\n" + page.body + "</main></div></body></html>\n";
}

std::vector<Page> guidePages(const fs::path& fragments, const fs::path& images) {
    std::vector<Page> pages;
    for (const char* name :
         {"index", "tutorial", "editor", "language", "debugging", "exceptions", "forms"}) {
        const std::string body = readFile(fragments / (std::string(name) + ".html"));
        pages.push_back({std::string(name) + ".html", titleOf(body), withImages(body, images)});
    }
    const std::string expressions = rendered(readFile(fragments / "../../expressions.md"));
    pages.push_back({"expressions.html", titleOf(expressions), expressions});
    return pages;
}

void writeManual(const fs::path& fragments, const fs::path& images, const fs::path& style,
                 const fs::path& output) {
    auto pages = guidePages(fragments, images);
    const auto reference = referencePages();
    pages.insert(pages.end(), reference.begin(), reference.end());
    const std::string mark = "@REFERENCE@";
    const auto at = pages.front().body.find(mark);
    if (at != std::string::npos) pages.front().body.replace(at, mark.size(), contents(pages));

    fs::create_directories(output / "images");
    for (const auto& page : pages) writeFile(output / page.file, document(pages, page));
    fs::copy_file(style, output / "manual.css", fs::copy_options::overwrite_existing);
    for (const auto& image : fs::directory_iterator(images))
        if (image.path().extension() == ".png")
            fs::copy_file(image, output / "images" / image.path().filename(),
                          fs::copy_options::overwrite_existing);
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 5) {
        std::fputs("usage: write_manual FRAGMENTS IMAGES STYLE OUTPUT\n", stderr);
        return 64;
    }
    writeManual(argv[1], argv[2], argv[3], argv[4]);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "write_manual: %s\n", error.what());
    return 1;
}
