#include "html.h"

namespace gopiv::html {
namespace {

constexpr const char* styleSheet = R"css(
:root {
    color-scheme: light dark;
    --text: #1b2733; --quiet: #52616f; --ground: #fff; --line: #c3ccd5; --accent: #1d5fa8; --on-accent: #fff;
}
@media (prefers-color-scheme: dark) {
    :root {
        --text: #e3e9ef; --quiet: #a6b3bf; --ground: #131a21; --line: #42515f; --accent: #8cc2ff; --on-accent: #0c1a29;
    }
}
* { box-sizing: border-box; }
body {
    display: flex; flex-direction: column; min-height: 100vh; max-width: 62rem;
    margin: 0 auto; padding: 1rem clamp(1rem, 4vw, 2rem);
    font: 1rem/1.5 system-ui, sans-serif; color: var(--text); background: var(--ground); overflow-wrap: anywhere;
}
main { flex: 1; padding: 1rem 0 2rem; }
header, footer { font-size: 0.9rem; color: var(--quiet); }
header { padding-bottom: 0.75rem; border-bottom: 1px solid var(--line); font-weight: 600; }
footer { padding-top: 0.75rem; border-top: 1px solid var(--line); }
h1 { margin: 0.5rem 0 1rem; font-size: clamp(1.4rem, 5vw, 1.9rem); line-height: 1.25; }
h2 { margin: 1.5rem 0 0.5rem; font-size: 1.2rem; }
a { color: var(--accent); }
:focus-visible { outline: 3px solid var(--accent); outline-offset: 3px; }
form { display: flex; flex-wrap: wrap; gap: 0.75rem; margin-top: 1.5rem; }
button {
    min-height: 2.75rem; padding: 0 1.5rem; border: 1px solid var(--accent); border-radius: 6px;
    font: inherit; color: var(--accent); background: var(--ground); cursor: pointer;
}
button.main { color: var(--on-accent); background: var(--accent); }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 0.25rem 1.5rem; }
dt, time { color: var(--quiet); }
dd { margin: 0; }
ul { padding-left: 1.25rem; }
li { padding: 0.2rem 0; }
li time { white-space: nowrap; }
.scroll { overflow-x: auto; }
table { width: 100%; min-width: 54rem; border-collapse: collapse; }
th, td { padding: 0.5rem 1.25rem 0.5rem 0; border-bottom: 1px solid var(--line); text-align: left; vertical-align: top; }
thead th { color: var(--quiet); white-space: nowrap; }
tbody th { font-weight: inherit; }
th.number, td.number { text-align: right; white-space: nowrap; }
code { font: 0.85em ui-monospace, monospace; }
)css";

// The empty icon keeps browsers from asking for one.
constexpr const char* start = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<link rel="icon" href="data:,">
<title>)";
constexpr const char* middle = R"(</style>
</head>
<body>
<header>Pivra development service</header>
<main>
<h1>)";
constexpr const char* end = R"(</main>
<footer>This service runs inside a program on this computer, and its data stays here.</footer>
</body>
</html>
)";

}  // namespace

std::string escaped(const std::string& text) {
    std::string html;
    for (const char c : text) {
        switch (c) {
            case '&':
                html += "&amp;";
                break;
            case '<':
                html += "&lt;";
                break;
            case '>':
                html += "&gt;";
                break;
            case '"':
                html += "&quot;";
                break;
            case '\'':
                html += "&#39;";
                break;
            default:
                html += c;
        }
    }
    return html;
}

std::string document(const std::string& title, const std::string& body) {
    const std::string heading = escaped(title);
    return start + heading + " - Pivra development service</title>\n<style>" + styleSheet + middle + heading +
           "</h1>\n" + body + end;
}

}  // namespace gopiv::html
