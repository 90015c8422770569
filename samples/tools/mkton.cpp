// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// mkton SCORE.txt OUT.wav: plays a score (samples/README.md) into a wave file.
#include "Klang.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <stdexcept>

using namespace paukfix;
using namespace Qt::StringLiterals;

using namespace Klang;

namespace {

// How a tone sounds: the strength of its overtones, how it begins and fades, how it trembles.
struct Timbre
{
    const char *name;
    double overtones[5];
    double attack, release; // seconds
    double decay;           // seconds to a third, 0 for a tone that holds
    double vibrato;         // part of the frequency
    double room;            // strength of the echo
    double peak;            // loudest sample: shrill sounds are kept down
};

constexpr Timbre Timbres[] = {
    {"floete", {1, 0.16, 0.06, 0.02, 0}, 0.03, 0.05, 0, 0.004, 0.10, 0.6},
    {"pfiff", {1, 0.05, 0, 0, 0}, 0.008, 0.015, 0, 0, 0.06, 0.25},
    {"klavier", {1, 0.50, 0.28, 0.16, 0.08}, 0.004, 0.08, 0.55, 0, 0.05, 0.6},
    {"holz", {1, 0, 0, 0, 0}, 0.005, 0.005, 0, 0, 0.06, 0.8},
};

// One sound of a score: frequencies (Hz) that glide from `from` to `to`, or a knock, or silence.
struct Sound
{
    std::vector<double> from, to;
    double seconds = 0;
    double loudness = 1;
    bool knock = false;
};

class Score
{
public:
    explicit Score(const QString &path);

    Spur Play() const;

    double Peak() const { return timbre_->peak; }

private:
    [[noreturn]] void Fail(const QString &what) const
    {
        throw std::runtime_error(u"%1:%2: %3"_s.arg(path_).arg(line_).arg(what).toStdString());
    }

    void Line(const QString &line);
    Sound Item(const QString &text) const;
    double Pitch(const QString &text) const;

    QString path_;
    int line_ = 0;
    const Timbre *timbre_ = nullptr;
    std::vector<Sound> sounds_;
};

Score::Score(const QString &path) : path_(path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        Fail(file.errorString());
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        ++line_;
        if (!line.isEmpty() && !line.startsWith(u'#'))
            Line(line);
    }
    if (sounds_.empty())
        Fail(u"no sound"_s);
}

void Score::Line(const QString &line)
{
    if (line.startsWith("klang: "_L1)) {
        const auto *found = std::find_if(std::begin(Timbres), std::end(Timbres), [&](const Timbre &timbre) {
            return line.mid(7) == QLatin1String(timbre.name);
        });
        if (found == std::end(Timbres))
            Fail(u"unknown \"%1\""_s.arg(line));
        timbre_ = found;
        return;
    }
    if (!timbre_)
        Fail(u"\"klang:\" comes first"_s);
    static const QRegularExpression form(u"^(?:(\\d+) x )?(.+)$"_s);
    const auto match = form.match(line);
    const int times = match.capturedLength(1) > 0 ? match.captured(1).toInt() : 1;
    std::vector<Sound> row;
    for (const QString &item : match.captured(2).split(u';'))
        row.push_back(Item(item.simplified()));
    for (int i = 0; i < times; ++i)
        sounds_.insert(sounds_.end(), row.begin(), row.end());
}

// "c5 0.5", "700>650 0.2 v0.6", "c4+e4 1", "- 0.3", "klopf 0.05"
Sound Score::Item(const QString &text) const
{
    const QStringList words = text.split(u' ');
    Sound sound;
    bool number = false;
    sound.seconds = words.value(1).toDouble(&number);
    if (!number || sound.seconds <= 0 || words.size() > 3)
        Fail(u"\"%1\" is no sound"_s.arg(text));
    if (words.size() == 3) {
        sound.loudness = words[2].mid(1).toDouble(&number);
        if (!number || !words[2].startsWith(u'v'))
            Fail(u"\"%1\" is no loudness"_s.arg(words[2]));
    }
    sound.knock = words[0] == "klopf"_L1;
    if (sound.knock || words[0] == "-"_L1)
        return sound;
    for (const QString &voice : words[0].split(u'+')) {
        const QStringList ends = voice.split(u'>');
        sound.from.push_back(Pitch(ends.first()));
        sound.to.push_back(Pitch(ends.last()));
    }
    return sound;
}

// A note from c2 to h7 (sharps with #) or a frequency in Hz.
double Score::Pitch(const QString &text) const
{
    static const QStringList notes{u"c"_s,  u"c#"_s, u"d"_s,  u"d#"_s, u"e"_s,  u"f"_s,
                                   u"f#"_s, u"g"_s,  u"g#"_s, u"a"_s,  u"a#"_s, u"h"_s};
    bool number = false;
    const double frequency = text.toDouble(&number);
    if (number && frequency >= 20 && frequency <= 16000)
        return frequency;
    const qsizetype note = notes.indexOf(text.chopped(1));
    const int octave = text.right(1).toInt(&number);
    if (note < 0 || !number)
        Fail(u"\"%1\" is no pitch"_s.arg(text));
    return 440 * std::pow(2, (static_cast<double>(note) - 9) / 12 + octave - 4);
}

Spur Tone(const Sound &sound, const Timbre &timbre)
{
    Spur tone(Samples(sound.seconds), 0.0);
    for (std::size_t voice = 0; voice < sound.from.size(); ++voice) {
        double phase = 0;
        for (std::size_t i = 0; i < tone.size(); ++i) {
            const double t = static_cast<double>(i) / Rate;
            const double glide = t / sound.seconds;
            const double frequency = sound.from[voice] * std::pow(sound.to[voice] / sound.from[voice], glide);
            phase += Tau * frequency * (1 + timbre.vibrato * std::sin(Tau * 5.5 * t)) / Rate;
            double wave = 0;
            for (int overtone = 0; overtone < 5; ++overtone)
                wave += timbre.overtones[overtone] * std::sin(phase * (overtone + 1));
            const double begin = std::min(1.0, t / timbre.attack);
            const double end = std::clamp((sound.seconds - t) / timbre.release, 0.0, 1.0);
            const double fade = timbre.decay > 0 ? std::exp(-t / timbre.decay) : 1.0;
            tone[i] += sound.loudness * wave * begin * end * fade;
        }
    }
    return tone;
}

// A knock on hollow wood.
Spur Knock(double loudness, Zufall &zufall)
{
    Bandpass wood(1150, 4);
    Bandpass crack(2600, 2);
    Spur knock(Samples(0.06));
    for (std::size_t i = 0; i < knock.size(); ++i) {
        const double t = static_cast<double>(i) / Rate;
        const double noise = zufall.Between(-1, 1) * std::exp(-t / 0.006);
        knock[i] = loudness * (4 * wood.Filter(noise) + 1.5 * crack.Filter(noise));
    }
    return knock;
}

Spur Score::Play() const
{
    constexpr double Lead = 0.08; // silence before the first sound
    constexpr double Tail = 0.35; // room for the echo
    double length = Lead + Tail;
    for (const Sound &sound : sounds_)
        length += sound.seconds;
    Spur track(Samples(length), 0.0);
    Zufall zufall(5);
    double start = Lead;
    for (const Sound &sound : sounds_) {
        if (sound.knock)
            Mix(track, Knock(sound.loudness, zufall), start, 1);
        else
            Mix(track, Tone(sound, *timbre_), start, 1);
        start += sound.seconds;
    }
    Mix(track, Room(track, 0), 0, timbre_->room);
    return track;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fputs("usage: mkton SCORE.txt OUT.wav\n", stderr);
        return 1;
    }
    try {
        const Score score(arguments[1]);
        std::vector<Spur> mono{score.Play()};
        Finish(mono, score.Peak(), 0.05);
        WriteWave(arguments[2], mono);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "mkton: %s\n", error.what());
        return 1;
    }
    return 0;
}
