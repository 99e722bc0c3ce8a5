#include "ui/form/form_question.h"

#include <map>

#include "host/services/frontend.h"
#include "object/form/form_texts.h"
#include "ui/boxes/message_box_dialog.h"

namespace korvant::ui {

int askInForm(const std::string& text, std::uint32_t style, std::int32_t locale) {
    MessageBoxRequest request;
    request.caption = kModuleCaption;
    request.text = text;
    request.plain = true;
    request.style = style;
    std::map<unsigned long, const char*> captions;
    addButtonCaptions(captions, locale);
    for (const auto& [button, caption] : captions) request.captions[button] = caption;
    return showMessageBox(request);
}

}  // namespace korvant::ui
