#pragma once
#include <odbomodule/odbomodule.h>

#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace memory_cube {

/// Names and values of properties. A value is MDX: a text constant needs its own quotes.
using Properties = std::vector<std::pair<KelpString, KelpString>>;

/// query->AddMemberFormula for a SELECT or CREATE, with the properties as pairs. A solve order below 0 is left out.
template <class Query>
void add_formula(RefPtr<Query> const & query, RefPtr<MDXField> const & member, RefPtr<MDXValue> const & value,
    Properties const & properties = {}, std::int32_t solveOrder = -1)
{
    std::vector<KelpString> names, values;
    for (auto const & [name, text] : properties) {
        names.push_back(name);
        values.push_back(text);
    }
    query->AddMemberFormula(member.get(), value.get(), solveOrder, names, values);
}

/// Passes the statement's text, on one line, to `send`. Then writes the statement to the generator's query log, if
/// there is one, with the duration of `send` if the settings ask for it. Returns what `send` returned. Logs nothing
/// if `send` throws. If memory runs out while the log is written, throws std::bad_alloc, and the result of `send`
/// is lost.
template <class Send>
auto logged(MDXQueryGenerator & generator, MDXQuery const & query, Send && send)
{
    MDXQueryLog * const log = generator.GetMDXQueryLog();
    MDXQueryLog::MDXQueryTimer * timer = nullptr; // and remains null unless durations are wanted
    KelpString const text = query.getText(false);
    if (log != nullptr)
        log->timeQuery(&timer);
    std::unique_ptr<MDXQueryLog::MDXQueryTimer> owner(timer);
    auto const write = [&] {
        if (log == nullptr)
            return;
        log->logQuery(&query, owner.get());
        owner.release(); // the log has deleted the timer: a generator's log is always open
    };

    if constexpr (std::is_void_v<std::invoke_result_t<Send, KelpString const &>>) {
        send(text);
        write();
    } else {
        auto result = send(text);
        write();
        return result;
    }
}

}
