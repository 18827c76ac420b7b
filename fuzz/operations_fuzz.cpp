#undef NDEBUG // the invariants are assertions
#include <odbomodule/odbomodule.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <functional>
#include <fuzzer/FuzzedDataProvider.h>

using Operation = std::function<support::RefCount *(MDXSet & s, MDXField & m, MDXValue & x)>;
#define CALL(...) [&](MDXSet & s, MDXField & m, MDXValue & x) { return (void)s, (void)m, (void)x, __VA_ARGS__; }

static KelpString with_quotes_doubled(KelpString const & text)
{
    KelpString result;
    for (char16_t const character : text)
        result.append(character == u'\'' ? 2 : 1, character);
    return result;
}

// Returns the texts after an operation. Asserts that the quoted texts match them.
static std::array<KelpString, 3> outcome(Operation const & operation, MDXSet & s, MDXField & m, MDXValue & x)
{
    try {
        operation(s, m, x);
    } catch (MDXError const &) {
    }
    std::array const texts{ s.getText(), m.getText(), x.getText() };
    std::array const quoted{ s.getQuotedText(), m.getQuotedText(), x.getQuotedText() };
    for (std::size_t i = 0; i < texts.size(); ++i)
        assert(quoted[i] == with_quotes_doubled(texts[i]));
    return texts;
}

// Operations on old objects, whose texts are rewritten in place if there is room, write the same texts as on new
// objects. A statement with the set contains its new text. The address sanitizer reports a wrong reference count as
// a leak or a use after free.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    static auto * const generator = createMSOLAP7QueryGenerator("[C]", false);
    RefPtr const set(generator->GenerateSet());
    RefPtr const field(generator->GenerateField("[F]"));
    RefPtr const value(generator->GenerateValue(0));
    RefPtr const tuple(generator->GenerateTuple());
    RefPtr const query(static_cast<MDXSelectQuery *>(generator->GenerateQuery(MDXQuery::QT_SELECT, nullptr)));
    query->AddAxisSpecification(0, set.get(), {}, MDXSelectQuery::NES_ALL);
    tuple->AddField(field.get());
    FuzzedDataProvider bytes(data, size);
    for (std::size_t length = 0; bytes.remaining_bytes() > 0 && length < 1000;) {
        KelpString const text = KelpString::fromUTF8(bytes.ConsumeRandomLengthString(20));
        auto const n = bytes.ConsumeIntegral<std::int32_t>(), count = bytes.ConsumeIntegral<std::int32_t>();
        bool const flag = bytes.ConsumeBool();
        Operation const operations[] = { CALL(s += m), CALL(s *= s), CALL(s.AddField(m, flag)), CALL(s.Delimit()),
            CALL(s.TakeName(text)), CALL(s.TakeSubset(n, count)), CALL(s.TakeSubset(tuple.get(), n, count)),
            CALL(s.TakeSubset(tuple.get(), tuple.get())), CALL(s.DrillUp(text)), CALL(s.DrillUpOnSet(&s)),
            CALL(s.TakeAncestorsOfMember(text, flag, std::min(n, 8))), CALL(s.TakeFilter(&x)), CALL(s.Order(n, &x)),
            CALL(s.TakeExtremity(
                MDXSet::ExtremityType{ n }, MDXSet::ExtremityMeasure{ count }, text, flag ? tuple.get() : nullptr)),
            CALL(s.TakeSiblings(&m, nullptr)), CALL(s.TakeDescendants(text, nullptr, true, n, text)),
            CALL(m.MoveToChild(text)), CALL(m.TakeAncestorAtLevel(nullptr, n)), CALL(m.LoopLeft()),
            CALL(m.ReplaceName(text)), CALL(x.TakeSum(&s)),
            CALL(x.TakeLinRegPoint(&x, &s, &x, flag ? &x : nullptr)), CALL(x.TakeProperty(&m, text)),
            CALL(x.Add(n)), CALL(x.ReverseSign()), CALL(x.TakeEquality(text)) };
        Operation const operation = bytes.PickValueInArray(operations);
        auto const want = outcome(operation, *RefPtr(generator->GenerateSet(set.get())),
            *RefPtr(generator->GenerateField(field.get())), *RefPtr(generator->GenerateValue(value->getText())));
        assert(outcome(operation, *set, *field, *value) == want);
        assert(query->getText(false).find(want[0]) != KelpString::npos);
        length = want[0].size() + want[1].size() + want[2].size();
    }
    return 0;
}
