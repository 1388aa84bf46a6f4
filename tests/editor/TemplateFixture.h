// SPDX-License-Identifier: MIT
// The editor over a manager of its own, with templates in a file in memory and a user that the test plays.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "capeopen/ComObject.h"
#include "manager/CReactionPackManager.h"
#include "manager/StoreFixture.h"
#include "manager/TemplateSource.h"
#include "support/CountedFake.h"
#include "support/FakeEditorUi.h"
#include "support/Values.h"

namespace reka::test {

/// The templates of a manager object, whose list a test may replace.
class CManagerTemplates : public ITemplateSource {
public:
    HRESULT GetListOfReactionsPackages(VARIANT* names) override {
        ++timesListed;
        if (!isListReplaced) return manager->GetListOfReactionsPackages(names);
        CopyVariant(names, replacedList.Get());
        return listResult;
    }
    TemplateStore& Store() override { return manager->Store(); }

    void ReplaceList(CVariant list, HRESULT result = S_OK) {
        isListReplaced = true;
        replacedList = std::move(list);
        listResult = result;
    }

    int timesListed = 0;

private:
    CComRef<CComObject<CReactionPackManager>> manager{new CComObject<CReactionPackManager>()};
    bool isListReplaced = false;
    CVariant replacedList;
    HRESULT listResult = S_OK;
};

class TemplateFixture : public StoreFixture {
protected:
    /// What is in the user's file.
    void PutTemplates(const Names& names) { Put(userFile, FileOf(names), 100); }
    Names NamesInFile() {
        TemplateStore stored;
        const auto operations = files.operations;
        stored.LoadTemplates();
        files.operations = operations;
        return NamesOf(stored);
    }
    static Names NamesOf(const TemplateStore& store) {
        Names names;
        for (const auto& definition : store.templates) names.emplace_back(definition->name.View());
        return names;
    }
    /// Whether the file was written since the last call.
    bool IsFileWritten() {
        const std::string line = Line("rename", temporaryFile, userFile);
        bool isWritten = false;
        for (const std::string& operation : files.operations) isWritten = isWritten || operation == line;
        files.operations.clear();
        return isWritten;
    }

    CFakeEditorUi ui;
};

}  // namespace reka::test
