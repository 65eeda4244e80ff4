// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/GedcomGenerator.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace tav {

namespace {

class Random {
public:
    explicit Random(uint64_t seed) : state_(seed) {}

    uint64_t next()
    {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    int below(int n) { return int(next() % uint64_t(n)); }
    bool chance(int percent) { return below(100) < percent; }
    template <typename T, size_t N>
    const T& pick(const std::array<T, N>& items)
    {
        return items[size_t(below(int(N)))];
    }

private:
    uint64_t state_;
};

const std::array<const char*, 24> maleNames = {
    "John",   "William", "Thomas", "James",   "George", "Henry",     "Charles", "Robert",
    "Edward", "Richard", "Joseph", "Samuel",  "Johann", "Friedrich", "Pierre",  "Jean",
    "Lars",   "Erik",    "José",   "Antonín", "Seán",   "Karl",      "Hendrik", "Matthias"};
const std::array<const char*, 24> femaleNames = {
    "Mary",   "Elizabeth", "Anne",   "Sarah", "Margaret", "Jane",  "Catherine", "Alice",
    "Emma",   "Hannah",    "Martha", "Ellen", "Maria",    "Anna",  "Marie",     "Louise",
    "Ingrid", "Kirsten",   "Zoë",    "Renée", "Dorothea", "Agnes", "Johanna",   "Isabel"};
const std::array<const char*, 40> surnames = {
    "Smith",     "Brown",    "Taylor",   "Wilson",       "Johnson",  "Walker",  "Wright",
    "Robinson",  "Thompson", "White",    "Hughes",       "Edwards",  "Green",   "Hall",
    "Wood",      "Harris",   "Lewis",    "Martin",       "Jackson",  "Clarke",  "Clark",
    "Turner",    "Hill",     "Scott",    "Cooper",       "Morris",   "Ward",    "King",
    "Baker",     "Carter",   "Müller",   "Schäfer",      "Sørensen", "Östberg", "Dvořák",
    "Fernández", "Lefèvre",  "Ó Briain", "Van der Berg", "Kowalski"};
const std::array<const char*, 16> towns = {
    "Ashford", "Barnsley", "Bedford", "Chester", "Dorchester", "Durham",    "Exeter", "Hereford",
    "Kendal",  "Lincoln",  "Ludlow",  "Norwich", "Ripon",      "Salisbury", "Whitby", "York"};
const std::array<const char*, 8> counties = {"Kent",     "Yorkshire",  "Devon",     "Norfolk",
                                             "Cheshire", "Shropshire", "Wiltshire", "Cumberland"};
const std::array<const char*, 14> occupations = {"Farmer",       "Agricultural labourer",
                                                 "Blacksmith",   "Weaver",
                                                 "Carpenter",    "Miller",
                                                 "Shoemaker",    "Innkeeper",
                                                 "Schoolmaster", "Clerk",
                                                 "Mason",        "Tailor",
                                                 "Coal miner",   "Domestic servant"};
const std::array<const char*, 12> months = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                            "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
const std::array<const char*, 8> noteLines = {
    "Baptised in the parish church; the register gives the father's trade.",
    "Named in the will of an uncle, proved at the archdeacon's court.",
    "Emigrated for some years and returned to the family farm.",
    "Listed in the census with two lodgers and a servant.",
    "The family bible records the date of birth in a different hand.",
    "Served as churchwarden and overseer of the poor.",
    "Buried in the churchyard beside the first wife.",
    "Letters survive written to a brother abroad."};

struct Person {
    int id;
    bool male;
    int given;
    int given2;  // -1: none
    int surname;
    int birthYear;
    int deathYear;  // 0: alive or unknown
    int famc = 0;
    std::vector<int> fams;
    int noteRecord = 0;
};

struct Fam {
    int id;
    int husband;
    int wife;
    int marriageYear;
    std::vector<int> children;
};

class Writer {
public:
    Writer(bool crlf, size_t reserve) : eol_(crlf ? "\r\n" : "\n")
    {
        out_.reserve(qsizetype(reserve));
    }

    void line(int level, const std::string& rest)
    {
        out_.append(char('0' + level));
        out_.append(' ');
        out_.append(rest.data(), qsizetype(rest.size()));
        out_.append(eol_);
    }
    QByteArray take() { return std::move(out_); }

private:
    const char* eol_;
    QByteArray out_;
};

std::string dateText(Random& random, int year)
{
    const int form = random.below(100);
    const std::string y = std::to_string(year);
    const std::string month = months[size_t(random.below(12))];
    if (form < 62)
        return std::to_string(1 + random.below(28)) + " " + month + " " + y;
    if (form < 72)
        return month + " " + y;
    if (form < 86)
        return y;
    if (form < 95)
        return "ABT " + y;
    return "BEF " + y;
}

std::string placeText(Random& random)
{
    return std::string(random.pick(towns)) + ", " + random.pick(counties) + ", England";
}

class Population {
public:
    explicit Population(const GeneratorOptions& options)
        : random_(options.seed), target_(options.individuals)
    {}

    void build()
    {
        // About 1 in 60 people founds a line and each generation grows by about
        // an eighth, so a file of any size spans a dozen generations or more.
        std::vector<int> generation;
        const int founders = std::max(16, target_ / 60);
        int year = 1500;
        while (!full()) {
            // A small file can die out; newcomers then start further lines.
            if (generation.empty()) {
                for (int i = 0; i < founders && !full(); ++i)
                    generation.push_back(addPerson(i % 2 == 0, year + random_.below(20),
                                                   random_.below(int(surnames.size()))));
            }
            generation = marryAndRaise(generation);
            year += 28;
        }
    }

    std::vector<Person> people;
    std::vector<Fam> families;
    Random random_;

private:
    bool full() const { return int(people.size()) >= target_; }

    int addPerson(bool male, int birthYear, int surname)
    {
        Person p;
        p.id = int(people.size()) + 1;
        p.male = male;
        p.given = random_.below(24);
        p.given2 = random_.chance(40) ? random_.below(24) : -1;
        p.surname = surname;
        p.birthYear = birthYear;
        const int lifespan = random_.chance(15) ? random_.below(15) : 40 + random_.below(55);
        p.deathYear = birthYear + lifespan < 2024 && random_.chance(85) ? birthYear + lifespan : 0;
        people.push_back(p);
        return p.id;
    }

    int addFamily(int husband, int wife, int year)
    {
        Fam f{int(families.size()) + 1, husband, wife, year, {}};
        families.push_back(f);
        people[size_t(husband - 1)].fams.push_back(f.id);
        people[size_t(wife - 1)].fams.push_back(f.id);
        return f.id;
    }

    int childrenWanted()
    {
        const int r = random_.below(100);
        if (r < 44)
            return 0;
        if (r < 73)
            return 1;
        if (r < 88)
            return 2;
        if (r < 95)
            return 3;
        if (r < 98)
            return 4;
        if (r < 99)
            return 5;
        return 6 + random_.below(5);
    }

    std::vector<int> marryAndRaise(const std::vector<int>& generation)
    {
        std::vector<int> next;
        std::vector<int> single;
        for (int id : generation) {
            if (random_.chance(95))
                single.push_back(id);
        }
        for (size_t i = 0; i < single.size() && !full(); ++i) {
            const int id = single[i];
            Person& self = people[size_t(id - 1)];
            if (!self.fams.empty())
                continue;
            const int marriages = random_.chance(30) ? 2 : 1;
            for (int m = 0; m < marriages && !full(); ++m) {
                int partner = 0;
                // Sometimes two people of the same generation marry each other,
                // which later makes cousins of their grandchildren's spouses.
                if (m == 0 && random_.chance(10)) {
                    for (size_t j = i + 1; j < single.size(); ++j) {
                        const Person& other = people[size_t(single[j] - 1)];
                        if (other.male != self.male && other.fams.empty() &&
                            other.famc != self.famc) {
                            partner = other.id;
                            break;
                        }
                    }
                }
                const Person me = people[size_t(id - 1)];
                if (partner == 0)
                    partner = addPerson(!me.male, me.birthYear - 3 + random_.below(7),
                                        random_.below(int(surnames.size())));
                const int husband = me.male ? id : partner;
                const int wife = me.male ? partner : id;
                const int year = std::max(people[size_t(husband - 1)].birthYear,
                                          people[size_t(wife - 1)].birthYear) +
                                 20 + random_.below(10) + m * 12;
                const int family = addFamily(husband, wife, year);
                const int children = childrenWanted();
                for (int c = 0; c < children && !full(); ++c) {
                    const int child =
                        addPerson(random_.chance(51), year + 1 + c * 2 + random_.below(2),
                                  people[size_t(husband - 1)].surname);
                    people[size_t(child - 1)].famc = family;
                    families[size_t(family - 1)].children.push_back(child);
                    next.push_back(child);
                }
            }
        }
        return next;
    }

    int target_;
};

}  // namespace

// The records of a generated text (HEAD and the submitter aside) in a
// random order, then the trailer.
QByteArray shuffledRecords(const QByteArray& text, const GeneratorOptions& options)
{
    const QByteArray eol = options.crlf ? "\r\n" : "\n";
    const QByteArray recordStart = eol + "0 @";
    std::vector<QByteArray> records;
    qsizetype first = text.indexOf(eol + "0 @I");
    const QByteArray head = text.left(first + eol.size());
    qsizetype at = first + eol.size();
    while (at < text.size()) {
        qsizetype next = text.indexOf(recordStart, at);
        next = next < 0 ? text.size() : next + eol.size();
        records.push_back(text.mid(at, next - at));
        at = next;
    }
    Random random(options.seed ^ 0x5EEDu);
    for (size_t i = records.size(); i > 1; --i)
        std::swap(records[i - 1], records[size_t(random.below(int(i)))]);
    QByteArray out = head;
    out.reserve(text.size() + 16);
    for (const QByteArray& record : records)
        out += record;
    return out + "0 TRLR" + eol;
}

namespace {

// The cross-reference of record `n` of a kind ('I', 'F', 'S', 'N'), with
// its "@"s, in the style asked for.
std::string xref(GeneratorOptions::Xrefs style, char kind, int n)
{
    switch (style) {
    case GeneratorOptions::Xrefs::Numbered:
        return "@" + std::string(1, kind) + std::to_string(n) + "@";
    case GeneratorOptions::Xrefs::Long:
        return "@" + std::string(1, kind) + std::to_string(100000000000LL + n) + "@";
    case GeneratorOptions::Xrefs::Text: {
        // The number in letters, so the text holds no digit at all.
        std::string letters;
        for (int v = n; v > 0; v = (v - 1) / 26)
            letters.insert(letters.begin(), char('A' + (v - 1) % 26));
        const char* word = kind == 'I'   ? "PERSON_"
                           : kind == 'F' ? "FAMILY_"
                           : kind == 'S' ? "SOURCE_"
                                         : "NOTE_";
        return "@" + std::string(word) + letters + "@";
    }
    }
    return {};
}

}  // namespace

QByteArray generateGedcom(const GeneratorOptions& options)
{
    const auto ref = [&options](char kind, int n) { return xref(options.xrefs, kind, n); };
    Population population(options);
    population.build();
    Random& random = population.random_;

    const int sourceCount = std::max(1, options.individuals / 200);
    const int noteCount = std::max(1, options.individuals / 100);
    Writer out(options.crlf, size_t(options.individuals) * 330 + 4096);

    out.line(0, "HEAD");
    out.line(1, "SOUR TAVGEN");
    out.line(2, "VERS 1.0");
    out.line(1, "DATE 21 NOV 2026");
    out.line(1, "SUBM @SUBM1@");
    out.line(1, "GEDC");
    out.line(2, "VERS 5.5.1");
    out.line(2, "FORM LINEAGE-LINKED");
    out.line(1, "CHAR UTF-8");
    out.line(0, "@SUBM1@ SUBM");
    out.line(1, "NAME Tav generator");

    int nextNoteRecord = 1;
    for (Person& p : population.people) {
        out.line(0, ref('I', p.id) + " INDI");
        std::string given = p.male ? maleNames[size_t(p.given)] : femaleNames[size_t(p.given)];
        if (p.given2 >= 0)
            given += std::string(" ") +
                     (p.male ? maleNames[size_t(p.given2)] : femaleNames[size_t(p.given2)]);
        out.line(1, "NAME " + given + " /" + surnames[size_t(p.surname)] + "/");
        out.line(1, std::string("SEX ") + (p.male ? "M" : "F"));
        if (random.chance(45))
            out.line(1, std::string("OCCU ") + random.pick(occupations));
        if (!random.chance(5)) {
            out.line(1, "BIRT");
            out.line(2, "DATE " + dateText(random, p.birthYear));
            out.line(2, "PLAC " + placeText(random));
            if (random.chance(30))
                out.line(2, "SOUR " + ref('S', 1 + random.below(sourceCount)));
        }
        if (p.deathYear) {
            out.line(1, "DEAT");
            out.line(2, "DATE " + dateText(random, p.deathYear));
            out.line(2, "PLAC " + placeText(random));
        }
        for (int f : p.fams)
            out.line(1, "FAMS " + ref('F', f));
        if (p.famc)
            out.line(1, "FAMC " + ref('F', p.famc));
        const int noteKind = random.below(100);
        if (noteKind < 20) {
            out.line(1, std::string("NOTE ") + random.pick(noteLines));
            out.line(2, std::string("CONT ") + random.pick(noteLines));
        } else if (noteKind < 25 && nextNoteRecord <= noteCount) {
            out.line(1, "NOTE " + ref('N', nextNoteRecord++));
        }
        if (random.chance(25))
            out.line(1, "SOUR " + ref('S', 1 + random.below(sourceCount)));
        out.line(1, "CHAN");
        out.line(2, "DATE " + std::to_string(1 + random.below(28)) + " " + random.pick(months) +
                        " 2019");
    }
    for (const Fam& f : population.families) {
        out.line(0, ref('F', f.id) + " FAM");
        out.line(1, "HUSB " + ref('I', f.husband));
        out.line(1, "WIFE " + ref('I', f.wife));
        for (int c : f.children)
            out.line(1, "CHIL " + ref('I', c));
        if (random.chance(75)) {
            out.line(1, "MARR");
            out.line(2, "DATE " + dateText(random, f.marriageYear));
            out.line(2, "PLAC " + placeText(random));
        }
        if (random.chance(3))
            out.line(1, "DIV Y");
    }
    for (int s = 1; s <= sourceCount; ++s) {
        out.line(0, ref('S', s) + " SOUR");
        out.line(1, std::string("TITL Parish registers of ") + random.pick(towns));
        if (random.chance(70))
            out.line(1, std::string("AUTH ") + random.pick(counties) + " Record Office");
        out.line(1, "PUBL Transcribed " + std::to_string(1950 + random.below(70)));
        if (random.chance(40))
            out.line(1, std::string("NOTE ") + random.pick(noteLines));
    }
    for (int n = 1; n <= noteCount; ++n) {
        out.line(0, ref('N', n) + " NOTE");
        out.line(1, std::string("CONC ") + random.pick(noteLines));
        out.line(1, std::string("CONT ") + random.pick(noteLines));
    }
    if (!options.shuffled) {
        out.line(0, "TRLR");
        return out.take();
    }
    return shuffledRecords(out.take(), options);
}

}  // namespace tav
