// Building and reorganising large contact lists. Every benchmark reports
// items per second, one item being one contact placed or moved, and the time
// per contact; both should stay flat as the roster grows.

#include <VeskData>

#include <benchmark/benchmark.h>

namespace {

QList<VeskBuddyContact> makeContacts(int count, VeskBuddyType const& kind)
{
    QList<VeskBuddyContact> contacts;
    contacts.reserve(count);
    for (int i = 0; i < count; ++i)
        contacts.append(VeskBuddyContact(nullptr, QStringLiteral("user%1@example.org").arg(i), QString(),
                                         kind, VeskPresence(), VeskSubscriptionType()));
    return contacts;
}

// Takes a group's children out together with their links, so that the
// records can go (container and children keep each other alive).
void empty(VeskBuddyGroup const& group)
{
    for (VeskBuddy const& child : std::as_const(group.data()->children))
        VeskBuddyContact(child).data()->parent = VeskBuddy();
    group.data()->children.clear();
}

void reportPerContact(benchmark::State& state, int contactsPerIteration)
{
    state.SetItemsProcessed(state.iterations() * contactsPerIteration);
    state.counters["per_contact"] = benchmark::Counter(
        contactsPerIteration, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// A fresh group filled with N contacts that belong to no group yet.
void BM_BuildGroup(benchmark::State& state)
{
    int const count = int(state.range(0));
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    QList<VeskBuddyContact> const contacts = makeContacts(count, kind);
    for (auto _ : state) {
        VeskBuddyGroup group(QStringLiteral("Everyone"));
        for (VeskBuddyContact const& contact : contacts)
            group.addBuddy(contact);
        benchmark::DoNotOptimize(group.childCount());
        state.PauseTiming();
        empty(group);
        state.ResumeTiming();
    }
    reportPerContact(state, count);
}

// All N contacts move, one addBuddy each, from one group to the other and,
// on the next iteration, back: every move takes the contact out of its old
// group and relinks it.
void BM_MoveAllBetweenGroups(benchmark::State& state)
{
    int const count = int(state.range(0));
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    QList<VeskBuddyContact> const contacts = makeContacts(count, kind);
    VeskBuddyGroup from(QStringLiteral("Friends"));
    VeskBuddyGroup to(QStringLiteral("Work"));
    for (VeskBuddyContact const& contact : contacts)
        from.addBuddy(contact);
    for (auto _ : state) {
        for (VeskBuddyContact const& contact : contacts)
            to.addBuddy(contact);
        qSwap(from, to);
    }
    benchmark::DoNotOptimize(to.childCount());
    empty(from);
    empty(to);
    reportPerContact(state, count);
}

// 1,000 contacts spread evenly over a group of N move to another group. The
// group is rebuilt in its original order, untimed, before each round. Taking
// an entry out of the middle of an ordered list shifts the entries after it,
// so this one grows with N: it shows the price of that shift.
void BM_MoveScatteredBetweenGroups(benchmark::State& state)
{
    int const count = int(state.range(0));
    int const moved = 1000;
    VeskBuddyType const kind(QStringLiteral("xmpp"), QStringLiteral("Jabber"));
    QList<VeskBuddyContact> const contacts = makeContacts(count, kind);
    QList<VeskBuddyContact> picked;
    for (int i = 0; i < moved; ++i)
        picked.append(contacts.at(i * (count / moved) + count / (2 * moved)));
    VeskBuddyGroup home(QStringLiteral("Friends"));
    VeskBuddyGroup away(QStringLiteral("Work"));
    for (auto _ : state) {
        state.PauseTiming();
        empty(home);
        empty(away);
        for (VeskBuddyContact const& contact : contacts)
            home.addBuddy(contact);
        state.ResumeTiming();
        for (VeskBuddyContact const& contact : picked)
            away.addBuddy(contact);
    }
    benchmark::DoNotOptimize(away.childCount());
    empty(home);
    empty(away);
    reportPerContact(state, moved);
}

} // namespace

BENCHMARK(BM_BuildGroup)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveAllBetweenGroups)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MoveScatteredBetweenGroups)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
