#include "commands/TerminalPlay.h"

#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/GameFolder.h"
#include "play/Transcript.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace zem::play {

namespace {

enum ExitStatus { Success = 0, FileProblem = 1 };

/// Prints the transcript of lines of input.
int PrintTranscript(Session& session, std::string_view bytes, const std::string& name, std::ostream& out,
                    std::ostream& err) {
    TranscriptPlayer player(session);
    out << player.Begin();
    std::size_t number = 0;
    while (!bytes.empty()) {
        const std::string_view line = TakeLine(bytes);
        ++number;
        if (line.find_first_not_of(" \t") == std::string_view::npos)
            continue;
        const std::optional<InputLine> input = ReadInputLine(line, number);
        if (!input) {
            out << std::flush;
            err << name << ':' << number
                << ": a line begins with \">\", \"<\" or \"@\" and a number: " << line << '\n';
            return FileProblem;
        }
        const std::optional<std::string> story = player.Play(*input);
        if (!story) {
            out << std::flush;
            err << name << ':' << number << ": " << player.Problem() << ": " << input->written << '\n';
            return FileProblem;
        }
        out << *story;
    }
    out << std::flush;
    return out ? Success : FileProblem;
}

int PrintTranscriptOf(Session& session, const std::string& file, std::istream& in, std::ostream& out,
                      std::ostream& err) {
    std::string bytes;
    if (file == "-")
        bytes.assign(std::istreambuf_iterator<char>(in), {});
    else
        try {
            bytes = ReadFile(file);
        } catch (const KelError& error) {
            err << file << ": " << error.what() << '\n';
            return FileProblem;
        }
    return PrintTranscript(session, bytes, file == "-" ? "standard input" : file, out, err);
}

/// Plays with somebody who types.
class TerminalGame {
public:
    TerminalGame(Session& session, std::istream& in, std::ostream& out)
        : session_(session),
          in_(in),
          out_(out) {}

    void Run() {
        Show(session_.Begin());
        while (!isOver_) {
            const bool isQuestion = session_.Needs() != Need::Line && session_.Needs() != Need::Nothing;
            if (!isQuestion)
                out_ << '\n';
            out_ << (isQuestion ? "< " : "> ") << std::flush;
            std::string line;
            if (!std::getline(in_, line))
                break;
            const Outcome outcome =
                isQuestion ? session_.Answer(FromUtf8(line)) : session_.Type(FromUtf8(line));
            if (outcome.isRefused)
                out_ << "The game has ended. UNDO, RESTORE and RESTART still work.\n";
            Show(outcome);
        }
        out_ << '\n' << std::flush;
    }

private:
    void Show(const Outcome& outcome) {
        story_.Add(outcome.pieces);
        story_.EndLine();
        out_ << story_.Take();
        switch (outcome.request) {
        case Request::Save:
            Show(session_.Saved(Write(session_.Save())));
            break;
        case Request::Restore:
            Restore();
            break;
        case Request::Quit:
            isOver_ = true;
            break;
        default:
            break;
        }
    }

    std::string AskFile() {
        out_ << "File: " << std::flush;
        std::string name;
        std::getline(in_, name);
        return name;
    }

    bool Write(const std::string& bytes) {
        const std::string name = AskFile();
        if (name.empty())
            return false;
        std::ofstream file(name, std::ios::binary);
        file << bytes << std::flush;
        return file.good();
    }

    void Restore() {
        try {
            Show(session_.Restore(ReadFile(AskFile())));
        } catch (const KelError&) {
            Show(session_.NotRestored());
        }
    }

    Session& session_;
    std::istream& in_;
    std::ostream& out_;
    StoryText story_;
    bool isOver_ = false;
};

} // namespace

int PlayInTerminal(const TerminalOptions& options, std::istream& in, std::ostream& out, std::ostream& err) {
    std::optional<GameFiles> files = LoadGameFiles(options.file, err);
    if (!files)
        return FileProblem;
    Session session(World::Compile(*std::move(files)), options.seed);
    if (const std::string why = session.WhyItCannotBegin(); !why.empty()) {
        err << ToUtf8(why) << '\n';
        return FileProblem;
    }
    if (options.linesFile)
        return PrintTranscriptOf(session, *options.linesFile, in, out, err);
    TerminalGame(session, in, out).Run();
    return Success;
}

} // namespace zem::play
