#include <odbomodule.h>

#include <iostream>
#include <memory>

int main()
{
    std::unique_ptr<MDXQueryGenerator> const generator(createMSOLAP7QueryGenerator("[Sales]", false));
    auto * query = static_cast<MDXSelectQuery *>(generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr));
    MDXSet * stores = generator->GenerateSet("{[Store].[All]}");
    query->AddAxisSpecification(0, stores, {}, MDXSelectQuery::NES_NON_EMPTY);
    stores->unuse();
    std::cout << query->getText(false);
    query->unuse();
}
