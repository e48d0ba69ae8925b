#include "tools/kestrelctl/CompletionScript.h"

#include <string_view>

namespace kestrel::ctl {

namespace {
using Place = CompletionPlace;
using Places = std::vector<CompletionPlace>;
using Words = std::vector<CompletionPlace::Word>;

std::string replaced(std::string text, std::string_view from, std::string_view to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string quoted(const std::string& text)
{
    return '\'' + replaced(text, "'", "'\\''") + '\'';
}

std::string fishQuoted(const std::string& text)
{
    return '\'' + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + '\'';
}

std::string texts(const Words& words)
{
    std::string list;
    for (const auto& word : words)
        list += (list.empty() ? "" : " ") + word.text;
    return list;
}

// The elements of an array for _describe of zsh.
std::string described(const Words& words)
{
    std::string list;
    for (const auto& word : words)
        list += ' ' + quoted(word.text + ':' + replaced(word.description, ":", "\\:"));
    return list;
}

// The patterns of `case "$place $word"` that lead from one place to the next: all places but the
// first one.
std::string paths(const Places& places, std::string_view separator)
{
    std::string list;
    for (std::size_t i = 1; i < places.size(); ++i)
        list.append(i == 1 ? "" : separator).append(quoted(places[i].path));
    return list;
}

// The branches of `case "$place $previous"` for the options that take a value.
std::string valueBranches(const Places& places, const std::string& completeFile)
{
    std::string branches;
    for (const Place& place : places) {
        for (const auto& option : place.options) {
            if (option.takesValue)
                branches += "    " + quoted(place.path + ' ' + option.text) + ") "
                    + (option.takesFile ? completeFile : "return") + " ;;\n";
        }
    }
    return branches;
}
} // namespace

std::string CompletionScript::bash(const Places& places)
{
    std::string script = "# Completions of kestrelctl for bash.\n"
                         "_kestrelctl() {\n"
                         "  local word=${COMP_WORDS[COMP_CWORD]} place= words= options= i\n"
                         "  COMPREPLY=()\n"
                         "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
                         "    case \"$place ${COMP_WORDS[i]}\" in\n"
                         "    "
        + paths(places, " | ")
        + ") place+=\" ${COMP_WORDS[i]}\" ;;\n"
          "    esac\n"
          "  done\n"
          "  case \"$place ${COMP_WORDS[COMP_CWORD - 1]}\" in\n"
        + valueBranches(places, "compopt -o default; return")
        + "  esac\n"
          "  case $place in\n";
    for (const Place& place : places)
        script += "    " + quoted(place.path) + ") words=" + quoted(texts(place.words))
            + " options=" + quoted(texts(place.options))
            + (place.takesFile ? "; compopt -o default" : "") + " ;;\n";
    return script
        + "  esac\n"
          "  [[ $word == -* ]] && words=$options\n"
          "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
          "}\n"
          "complete -F _kestrelctl kestrelctl\n";
}

std::string CompletionScript::zsh(const Places& places)
{
    std::string script = "#compdef kestrelctl\n"
                         "# Completions of kestrelctl for zsh.\n"
                         "_kestrelctl() {\n"
                         "  local place= file= i\n"
                         "  local -a candidates options\n"
                         "  for ((i = 2; i < CURRENT; i++)); do\n"
                         "    case \"$place ${words[i]}\" in\n"
                         "    "
        + paths(places, "|")
        + ") place+=\" ${words[i]}\" ;;\n"
          "    esac\n"
          "  done\n"
          "  case \"$place ${words[CURRENT - 1]}\" in\n"
        + valueBranches(places, "_files; return")
        + "  esac\n"
          "  case $place in\n";
    for (const Place& place : places)
        script += "    " + quoted(place.path) + ")\n      candidates=(" + described(place.words)
            + " )\n      options=(" + described(place.options) + " )"
            + (place.takesFile ? "\n      file=yes" : "") + " ;;\n";
    return script
        + "  esac\n"
          "  if [[ $PREFIX == -* ]]; then\n"
          "    _describe -o option options\n"
          "  elif [[ -n $file ]]; then\n"
          "    _files\n"
          "  else\n"
          "    _describe command candidates\n"
          "  fi\n"
          "}\n"
          "if [[ $funcstack[1] == _kestrelctl ]]; then\n"
          "  _kestrelctl \"$@\"\n"
          "else\n"
          "  compdef _kestrelctl kestrelctl\n"
          "fi\n";
}

std::string CompletionScript::fish(const Places& places)
{
    std::string script = "# Completions of kestrelctl for fish.\n"
                         "function __kestrelctl_at --argument-names wanted\n"
                         "    set -l place ''\n"
                         "    for word in (commandline -opc)[2..]\n"
                         "        switch \"$place $word\"\n"
                         "            case "
        + paths(places, " ")
        + "\n"
          "                set place \"$place $word\"\n"
          "        end\n"
          "    end\n"
          "    test \"$place\" = \"$wanted\"\n"
          "end\n"
          "complete -c kestrelctl -f\n";
    for (const Place& place : places) {
        const std::string start
            = "complete -c kestrelctl -n " + fishQuoted("__kestrelctl_at '" + place.path + "'");
        for (const auto& word : place.words)
            script += start + " -a " + word.text + " -d " + fishQuoted(word.description) + '\n';
        for (const auto& option : place.options)
            script += start + " -l " + option.text.substr(2)
                + (option.takesValue ? option.takesFile ? " -r -F" : " -x" : "") + " -d "
                + fishQuoted(option.description) + '\n';
        if (place.takesFile)
            script += start + " -F\n";
    }
    return script;
}

} // namespace kestrel::ctl
