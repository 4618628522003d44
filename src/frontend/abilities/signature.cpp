#include "frontend/abilities/signature.h"

#include "frontend/abilities/context.h"
#include "frontend/syntax/reading.h"
#include "frontend/views/listed_names.h"

namespace orvex::frontend {

std::optional<Signature> signature_at(const Document& document, Offset offset) {
    const Context context = context_at(document, offset);
    if (context.model == nullptr) return {};
    const OpenList list = open_list_at(document, context, offset);
    if (list.name.empty()) return {};
    const Index index =
        context.model->names.find(capitals(text_of(document.source.bytes, list.name)));
    if (index == no_index || context.model->symbols[index].arguments.empty()) return {};
    Signature signature;
    signature.text = name_of(*context.model, index) + "(";
    for (const std::string& argument : context.model->symbols[index].arguments) {
        if (!signature.arguments.empty()) signature.text += ",";
        const int begin = static_cast<int>(signature.text.size());
        signature.text += argument;
        signature.arguments.emplace_back(begin, static_cast<int>(signature.text.size()));
    }
    signature.text += ")";
    signature.active = list.argument;
    signature.description = description_of(*context.model, document.source.bytes, index);
    return signature;
}

}  // namespace orvex::frontend
