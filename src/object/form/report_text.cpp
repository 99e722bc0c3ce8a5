#include "object/form/report_text.h"

#include "object/form/form_texts.h"

namespace korvant {

namespace {

std::string cut(std::string text) {
    if (text.size() <= kReportBytes) return text;
    text.resize(kReportBytes);
    return text + "...";
}

void appendEscaped(std::string& html, char c) {
    if (c == '<')
        html += "&lt;";
    else if (c == '>')
        html += "&gt;";
    else if (c == '&')
        html += "&amp;";
    else
        html += c;
}

constexpr char kRule[] = "<hr color=blue><br>";

}  // namespace

void NumberedMessages::add(std::string_view message) {
    ++count_;
    if (text_.size() > kReportBytes) return;
    if (count_ == 1) {
        text_ = message;
        return;
    }
    if (count_ == 2) text_ = "1) " + text_ + "<br>";
    text_ += std::to_string(count_) + ") ";
    text_ += message;
    text_ += "<br>";
}

std::string propertyReport(const NumberedMessages& messages, bool errors, std::int32_t locale) {
    if (messages.count() == 0) return {};
    const bool several = messages.count() > 1;
    const std::string summary =
        errors ? errorSummary(several, locale) : warningSummary(several, locale);
    return cut("<b>" + summary + "</b><br>" + messages.text());
}

std::string formReport(const NumberedMessages& captions, std::int32_t locale) {
    if (captions.count() == 0) return {};
    return cut("<b>" + errorSummary(captions.count() > 1, locale) + " : </b><br>" +
               captions.text());
}

std::string describe(const DescriptionParts& parts) {
    std::string html = "<center><h2>" + parts.heading + "</h2></center><br>" + kRule;
    const bool report = !parts.errors.empty() || !parts.warnings.empty();
    if (parts.hint != nullptr) {
        html += *parts.hint + "<br>";
        if (report) html += kRule;
    }
    if (report) html += (parts.errors.empty() ? parts.warnings : parts.errors) + "<br>";
    return html;
}

std::string greyLine(std::string_view html) {
    return "<font color=gray>" + std::string(html) + "</font><br>";
}

std::string htmlOfWestern(std::string_view text) {
    std::string html;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80)
            appendEscaped(html, c);
        else
            html += "&#" + std::to_string(byte) + ";";
    }
    return html;
}

std::string htmlOfPlain(std::string_view text) {
    std::string html;
    for (const char c : text) appendEscaped(html, c);
    return html;
}

}  // namespace korvant
