// SPDX-License-Identifier: MIT
// Any text as an expression over three compounds, one of them with a blank and one with a comma in its name. A tree
// that comes out of it is used as that of a reaction: copied, evaluated, stored and read again.

#include "QuietMessages.h"
#include "expression/parse/ParseExpression.h"
#include "platform/CodePage.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    reka::ReactionPackDefinition definition(nullptr);
    for (const char16_t* const name : {u"water", u"carbon dioxide", u"1,3-butadiene"}) {
        definition.compounds.push_back(std::make_unique<reka::CompoundDefinition>());
        definition.compounds.back()->name = reka::CBstr::Make(name);
        definition.compounds.back()->molecularWeight = 18.015;
    }
    const std::u16string text = reka::WideText({reinterpret_cast<const char*>(data), size});
    std::u16string errorText;
    std::int32_t position = -1;
    reka::ExpressionTree tree = reka::ParseExpression(definition, text, errorText, &position);
    if ((tree != nullptr) != errorText.empty() || position < 0) std::abort();
    if (!tree) return 0;
    definition.reactions.push_back(std::make_unique<reka::ReactionDefinition>(3));
    definition.reactions[0]->rateExpression = std::make_unique<reka::ExpressionRef>(std::move(tree));
    reka::fuzz::UseDefinition(definition);
    return 0;
}
