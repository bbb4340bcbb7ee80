
// The page around the player. The player is asked by calls and tells what is new as JSON; whatever it tells becomes text
// and never markup. All that was put in since the beginning is kept in the browser, so that a reload plays it again.
'use strict';
(async () => {
const $ = id => document.getElementById(id);
const story = $('story'), line = $('line'), saves = $('saves');
const tell = text => { $('notice').textContent = text; $('notice').hidden = text === ''; };

const lacks = [];
if (typeof WebAssembly === 'undefined') lacks.push('WebAssembly');
if (typeof DecompressionStream === 'undefined') lacks.push('DecompressionStream');
if (!('showModal' in HTMLElement.prototype) && typeof HTMLDialogElement === 'undefined') lacks.push('dialogs');
if (!('replaceChildren' in Element.prototype)) lacks.push('replaceChildren');
if (lacks.length > 0) {
    tell('This browser lacks ' + lacks.join(' and ') + ', so the game cannot be played in it. Firefox 113, Chrome and Edge 103, Safari 16.4 and all later ones can.');
    return;
}

// What the browser keeps. Other pages may write there, too: nothing of it is trusted.
const { gameKey, stateKey } = document.body.dataset;
const keep = (key, value) => { try { localStorage.setItem('kel-' + key, JSON.stringify(value)); return true; } catch { return false; } };
const kept = key => { try { return JSON.parse(localStorage.getItem('kel-' + key)); } catch { return null; } };
const isText = value => typeof value === 'string';

// How it looks, which holds for all games.
const look = Object.assign({ size: 18, dark: null }, kept('look'));
const isDark = () => typeof look.dark === 'boolean' ? look.dark : matchMedia('(prefers-color-scheme: dark)').matches;
const applyLook = () => {
    const root = document.documentElement;
    look.size = Math.max(12, Math.min(48, Number(look.size) || 18));
    root.style.fontSize = look.size + 'px';
    if (typeof look.dark === 'boolean') { root.classList.toggle('dark', look.dark); root.classList.toggle('light', !look.dark); }
    $('colours').textContent = isDark() ? 'Light' : 'Dark';
    $('colours').setAttribute('aria-label', (isDark() ? 'Light' : 'Dark') + ' colours');
};
const changeLook = change => { Object.assign(look, change); applyLook(); keep('look', look); };
applyLook();
$('smaller').addEventListener('click', () => changeLook({ size: look.size - 2 }));
$('larger').addEventListener('click', () => changeLook({ size: look.size + 2 }));
$('colours').addEventListener('click', () => changeLook({ dark: !isDark() }));

// The story: entries, of which the page shows all and the browser keeps the last.
const mostLetters = 1e6, mostKept = 60000;
let entries = [], part = null, paragraph = null, letters = 0, firstNew = null;
// The story stands in parts, of which the browser lays out only those in sight: a turn may print a thousand paragraphs.
const addBlock = made => {
    if (!part || part.childElementCount >= 40) {
        part = document.createElement('div');
        part.className = 'part';
        story.append(part);
    }
    part.append(made);
    firstNew = firstNew || made;
};
const addParagraph = name => {
    const made = document.createElement('p');
    if (name) made.className = name;
    addBlock(made);
    return made;
};

// The player.
const toBytes = text => { const letters = atob(text), bytes = new Uint8Array(letters.length); for (let k = 0; k < letters.length; k++) bytes[k] = letters.charCodeAt(k); return bytes; };
const toBase64 = bytes => { let text = ''; for (const byte of bytes) text += String.fromCharCode(byte); return btoa(text); };
const unpack = async id => new Uint8Array(await new Response(new Response(toBytes($(id).textContent)).body.pipeThrough(new DecompressionStream('gzip'))).arrayBuffer());
let player, hasStopped = false;
const stop = reason => {
    if (hasStopped) return;
    hasStopped = true;
    $('form').hidden = true;
    $('ways').replaceChildren();
    addParagraph('fault').textContent = 'The game has stopped, by a fault of the program that plays it (' + reason + '). What was played is kept: reload the page to go on.';
};
const memory = () => new Uint8Array(player.memory.buffer);
const put = bytes => { const at = player.Space(bytes.length); memory().set(bytes, at); };
const result = () => memory().slice(player.Result(), player.Result() + player.Length());
const call = (name, ...values) => {
    try { player[name](...values); return JSON.parse(new TextDecoder().decode(result())); } catch (error) { stop(String(error)); throw error; }
};
const callWith = (name, text) => { put(new TextEncoder().encode(text)); return call(name); };

let files;
try {
    files = JSON.parse($('files').textContent);
    const nothing = () => 0; // the player has no system around it and asks for none
    const [wasm, game] = await Promise.all([unpack('player'), unpack('game')]);
    const { instance } = await WebAssembly.instantiate(wasm, {
        page: { Fault: (at, length) => stop(new TextDecoder().decode(memory().slice(at, at + length))) },
        wasi_snapshot_preview1: new Proxy({}, { get: () => nothing })
    });
    player = instance.exports;
    if (player._initialize) player._initialize();
    put(game);
    player.Load();
} catch (error) {
    tell('This browser could not start the game (' + error + '). Firefox 113, Chrome and Edge 103, Safari 16.4 and all later ones can.');
    return;
}

// How its pieces look. Names of colours and fonts are looked up and never put into a style.
const hues = {
    red: 'red darkred crimson maroon firebrick', orange: 'orange darkorange coral tomato', brown: 'brown sienna saddlebrown chocolate',
    yellow: 'yellow gold goldenrod khaki', green: 'green darkgreen lime limegreen olive forestgreen seagreen',
    cyan: 'cyan aqua teal turquoise darkcyan', blue: 'blue darkblue navy royalblue steelblue lightblue skyblue',
    purple: 'purple violet indigo darkviolet', pink: 'pink hotpink magenta fuchsia deeppink', grey: 'grey gray darkgray darkgrey silver lightgray lightgrey'
};
const fonts = { sans: 'arial helvetica verdana tahoma calibri sans-serif', mono: 'courier consolas monospace lucida fixedsys terminal' };
const nameIn = (lists, name) => name && Object.keys(lists).find(key => lists[key].split(' ').includes(String(name).trim().toLowerCase().split(' ')[0]));
const addText = entry => {
    entry.text.split('\n').forEach((text, k) => {
        if (k > 0) paragraph = paragraph ? null : (addParagraph(), null);
        if (text === '') return;
        paragraph = paragraph || addParagraph(entry.align === 'center' || entry.align === 'right' ? entry.align : '');
        const span = document.createElement(entry.choice ? 'button' : 'span');
        for (const name of ['bold', 'italic', 'underline']) if (entry[name]) span.classList.add(name);
        if (entry.size) span.style.fontSize = Math.max(0.7, Math.min(3, entry.size / 12)) + 'em';
        for (const name of [nameIn(hues, entry.colour), nameIn(fonts, entry.font)]) if (name) span.classList.add(name);
        if (entry.choice) {
            span.type = 'button';
            span.className = 'choice';
            span.addEventListener('click', () => enter(String(entry.choice)));
        }
        span.textContent = text;
        paragraph.append(span);
    });
};
const addPicture = entry => {
    if (!Object.prototype.hasOwnProperty.call(files, entry.text)) return;
    const image = document.createElement('img');
    image.src = files[entry.text];
    image.alt = entry.text;
    addBlock(image);
    paragraph = null;
};
const render = entry => {
    letters += entry.text.length;
    if (entry.kind === 'text') addText(entry);
    else if (entry.kind === 'picture') addPicture(entry);
    else { paragraph = null; addParagraph(entry.kind).textContent = entry.text; }
};
const clear = () => { entries = []; letters = 0; part = null; paragraph = null; firstNew = null; story.replaceChildren(); };
const add = entry => {
    entries.push(entry);
    render(entry);
    if (letters <= mostLetters) return;
    while (letters > mostLetters / 2) letters -= entries.shift().text.length;
    const rest = entries;
    clear();
    rest.forEach(render);
    entries = rest;
};
const endChoices = () => {
    for (const button of story.querySelectorAll('button.choice')) {
        const span = document.createElement('span');
        span.textContent = button.textContent;
        button.replaceWith(span);
    }
    for (const entry of entries) delete entry.choice;
};
const note = text => add({ kind: 'note', text });
/// Shows the end of the story, but never so much that the beginning of what is new leaves the page.
const reveal = () => {
    if (!firstNew) return;
    const tools = getComputedStyle($('tools')).position === 'sticky' ? $('tools').offsetHeight : 0;
    window.scrollTo(0, firstNew.getBoundingClientRect().top + window.scrollY - tools - 8);
    firstNew = null;
};

// Sounds.
let sounds = [], music = '';
const silence = () => { for (const sound of sounds) sound.pause(); sounds = []; music = ''; };
const play = (name, isMusic) => {
    if (!Object.prototype.hasOwnProperty.call(files, name)) return;
    if (isMusic) silence();
    const sound = new Audio(files[name]);
    sound.loop = isMusic;
    if (isMusic) music = name;
    sounds.push(sound);
    sound.addEventListener('ended', () => { sounds = sounds.filter(other => other !== sound); });
    sound.play().catch(() => {}); // browsers want to be clicked before they make a noise
};

// What comes from the player, one after the other, because there may be pauses in it.
let outcome = null, queue = [], pause = 0;
const isWaiting = () => pause !== 0;
const isQuestion = () => outcome.need !== 'line' && outcome.need !== 'nothing';
const showPiece = piece => {
    if (piece.kind === 'clear') clear();
    else if (piece.kind === 'silence') silence();
    else if (piece.kind === 'sound' || piece.kind === 'music') play(piece.text, piece.kind === 'music');
    else add(piece);
};
const showQueue = () => {
    clearTimeout(pause);
    pause = 0;
    while (queue.length > 0) {
        const piece = queue.shift();
        if (piece.kind === 'pause') {
            pause = setTimeout(() => { showQueue(); reveal(); }, piece.seconds * 1000);
            break;
        }
        showPiece(piece);
    }
    showControls();
    if (!isWaiting() && outcome.request) { const request = outcome.request; outcome.request = ''; carryOut(request); }
};
const show = next => {
    outcome = next;
    queue.push(...next.pieces);
    next.pieces = [];
    if (!isWaiting()) showQueue();
    remember();
    reveal();
};
const carryOut = request => {
    if (request === 'save') openSaves(true, true);
    else if (request === 'restore') openSaves(false, true);
    else if (request === 'transcripton') saveText();
    else if (request === 'quit') note('The game is kept in this browser. Close the page, or go on with Undo, Restore or Restart.');
};

// What can be done.
const prompts = { line: 'What do you do?', text: 'Type an answer', yesno: 'Yes or no?', choice: 'Type a number, or choose above', key: 'Press any key', nothing: 'The game has ended: undo, restore or restart it' };
const button = (text, typed) => {
    const made = document.createElement('button');
    made.type = 'button';
    made.textContent = text;
    made.addEventListener('click', () => { if (isWaiting()) showQueue(); else enter(typed); focusLine(); });
    return made;
};
const group = (caption, buttons) => {
    if (buttons.length === 0) return [];
    const made = document.createElement('nav'), heading = document.createElement('h2');
    heading.textContent = caption;
    made.setAttribute('aria-label', caption);
    made.append(heading, ...buttons);
    return [made];
};
const showControls = () => {
    const need = isWaiting() ? 'key' : outcome.need;
    $('prompt').textContent = isWaiting() ? '...' : prompts[need];
    $('undo').disabled = !outcome.undo;
    $('ways').replaceChildren(
        ...need === 'line' ? [
            ...group('Ways out', [...outcome.exits.map(way => button(way, way)), ...outcome.places.map(place => button('to ' + place, 'go to ' + place))]),
            ...group('Here', outcome.things.map(thing => button(thing, 'look at ' + thing))),
            ...group('You carry', outcome.items.map(item => button(item, 'look at ' + item)))]
        : need === 'yesno' ? group('Answer', [button('Yes', 'yes'), button('No', 'no')])
        : need === 'key' ? group('Go on', [button('Go on', '')]) : []);
};
const focusLine = () => { (matchMedia('(pointer: coarse)').matches ? $('ways') : line).focus({ preventScroll: true }); };

// All that was put in since the beginning, which the player can play again.
let seed = 0, calls = [];
const mostCalls = 20000;
const carry = ([what, value]) =>
    what === 't' ? callWith('Type', value) : what === 'a' ? callWith('Answer', value) : what === 'p' ? call('Pass', value)
    : what === 's' ? call('Saved', value) : what === 'u' ? call('Undo') : what === 'r' ? call('Restart') : (put(toBytes(value)), call('Restore'));
const carryAndNote = entry => {
    const next = carry(entry), last = calls[calls.length - 1];
    if (entry[0] === 'p' && last && last[0] === 'p' && next.pieces.length === 0) last[1] += entry[1];
    else calls.push(entry);
    return next;
};
let isTold = false;
const remember = () => {
    if (hasStopped || !outcome) return;
    let shown = entries;
    for (const piece of queue)
        if (piece.kind === 'clear') shown = [];
        else if (piece.kind === 'text' || piece.kind === 'picture') shown = [...shown, piece];
    let begin = shown.length, size = 0;
    while (begin > 0 && (size += shown[begin - 1].text.length) < mostKept) begin--;
    if (calls.length > mostCalls && !isQuestion()) {
        player.Save(); // a game of days goes on from where it is, without the way back
        calls = [['v', toBase64(result())]];
    }
    if (!keep('state-' + stateKey, { seed, calls, entries: shown.slice(begin), history, music }) && !isTold) {
        isTold = true;
        note('This browser keeps nothing for this page: save the game as a file before you close it.');
    }
};
const isCall = entry => Array.isArray(entry) && entry.length <= 2 && 'tapsurv'.includes(entry[0]) &&
    ('ps'.includes(entry[0]) ? Number.isInteger(entry[1]) && entry[1] >= 0 : 'ur'.includes(entry[0]) || isText(entry[1]));
const isEntry = entry => entry !== null && typeof entry === 'object' && ['text', 'picture', 'typed', 'note'].includes(entry.kind) && isText(entry.text);
const goOn = () => {
    const old = kept('state-' + stateKey);
    if (!old || !Number.isInteger(old.seed) || !Array.isArray(old.calls) || !old.calls.every(isCall) || !Array.isArray(old.entries) || !old.entries.every(isEntry)) return false;
    seed = old.seed;
    outcome = call('Begin', seed);
    const end = performance.now() + 5000;
    for (const entry of old.calls) {
        outcome = carry(entry);
        if (performance.now() > end) return false; // not one of ours
    }
    calls = old.calls;
    if (Array.isArray(old.history)) history = old.history.filter(isText);
    at = history.length;
    outcome.pieces = [];
    outcome.request = '';
    entries = old.entries;
    entries.forEach(render);
    if (outcome.need !== 'choice') endChoices();
    if (isText(old.music) && old.music) play(old.music, true);
    return true;
};

// The line: earlier ones with the arrows, the rest of a word offered behind the caret, which Tab takes.
let history = [], at = 0, draft = '', hasOffer = false;
const offers = () => hasOffer && line.selectionEnd === line.value.length && line.selectionStart < line.selectionEnd;
const enter = typed => {
    if (hasStopped || isWaiting()) return;
    endChoices();
    firstNew = null;
    if (outcome.need !== 'key') add({ kind: 'typed', text: '> ' + typed });
    if (isQuestion()) {
        show(carryAndNote(['a', typed]));
        return;
    }
    if (typed.trim()) {
        if (history[history.length - 1] !== typed) history.push(typed);
        history = history.slice(-200);
    }
    at = history.length;
    const turns = outcome.turns, next = carryAndNote(['t', typed]);
    if (next.refused) note('The game has ended. Undo, Restore and Restart still work.');
    else if (next.pieces.length === 0 && next.turns < turns) noteUndone(next);
    show(next);
};
const noteUndone = next => note('Taken back.' + (next.room ? ' You are in: ' + next.room + '.' : ''));
$('form').addEventListener('submit', event => {
    event.preventDefault();
    const typed = offers() ? line.value.slice(0, line.selectionStart) : line.value; // what was only offered was not typed
    line.value = '';
    hasOffer = false;
    if (isWaiting()) { showQueue(); reveal(); return; }
    if (typed.trim() === '' && !isQuestion()) return;
    enter(typed);
});
const showEarlier = step => {
    const wanted = at + step;
    if (wanted < 0 || wanted > history.length) return;
    if (at === history.length) draft = line.value;
    at = wanted;
    line.value = at === history.length ? draft : history[at];
    line.setSelectionRange(line.value.length, line.value.length);
};
line.addEventListener('keydown', event => {
    if (event.key === 'ArrowUp' || event.key === 'ArrowDown') {
        showEarlier(event.key === 'ArrowUp' ? -1 : 1);
        event.preventDefault();
    } else if (event.key === 'Tab' && !event.shiftKey && offers()) {
        line.value += ' ';
        line.setSelectionRange(line.value.length, line.value.length);
        hasOffer = false;
        event.preventDefault();
    }
});
line.addEventListener('input', event => {
    hasOffer = false;
    const typed = line.value, word = typed.slice(typed.lastIndexOf(' ') + 1).toLowerCase();
    if (event.inputType !== 'insertText' || event.isComposing || word.length < 2 || line.selectionEnd !== typed.length || isQuestion()) return;
    const words = ['examine', 'inventory', 'restore', 'restart', 'speak', 'transcript', ...outcome.items, ...outcome.things, ...outcome.exits, ...outcome.places];
    const found = words.sort().find(known => known.length > word.length && known.toLowerCase().startsWith(word));
    if (!found) return;
    line.value = typed + found.slice(word.length);
    line.setSelectionRange(typed.length, line.value.length);
    hasOffer = true;
});
document.addEventListener('keydown', event => {
    const isLetter = event.key.length === 1 && !event.ctrlKey && !event.altKey && !event.metaKey;
    if (!outcome || hasStopped || saves.open || !(isLetter || event.key === 'Enter') || event.target.closest('button')) return;
    if (isWaiting() || outcome.need === 'key') {
        event.preventDefault();
        if (isWaiting()) { showQueue(); reveal(); } else enter('');
    } else if (isLetter && event.key !== ' ' && event.target.tagName !== 'INPUT') line.focus({ preventScroll: true });
});

// Saved games, in the browser or as files.
const savedGames = () => { const list = kept('saves-' + gameKey); return Array.isArray(list) ? list.filter(one => one && isText(one.name) && isText(one.game) && isText(one.when)) : []; };
const download = (bytes, ending, type) => {
    const link = document.createElement('a');
    link.href = 'data:' + type + ';base64,' + toBase64(bytes);
    link.download = (document.title.replace(/[^A-Za-z0-9 -]/g, '').trim() || 'game') + ending;
    link.click();
};
const gameBytes = () => { player.Save(); return result(); };
const saveText = () => {
    const text = entries.filter(entry => entry.kind !== 'picture').map(entry => entry.kind === 'text' ? entry.text : '\n' + entry.text + '\n').join('');
    download(new TextEncoder().encode(text), '.txt', 'text/plain;charset=utf-8');
};
let isAsked = false; // by a line that was typed, which waits for its answer
const answerSave = isSaved => { saves.close(); if (isAsked || isSaved) { isAsked = false; firstNew = null; show(carryAndNote(['s', isSaved ? 1 : 0])); } focusLine(); };
const restore = text => { saves.close(); isAsked = false; endChoices(); firstNew = null; try { toBytes(text); } catch { text = ''; } show(carryAndNote(['v', text])); focusLine(); };
const listSaves = isSaving => {
    const list = savedGames();
    $('savesNote').textContent = list.length > 0 ? '' : isSaving ? '' : 'This browser holds no saved game of this story.';
    $('saveList').replaceChildren(...list.map((one, index) => {
        const item = document.createElement('li'), open = document.createElement('button'), remove = document.createElement('button');
        open.type = remove.type = 'button';
        open.textContent = one.name + ', ' + one.when;
        open.disabled = isSaving;
        open.addEventListener('click', () => restore(one.game));
        remove.textContent = 'Delete';
        remove.setAttribute('aria-label', 'Delete ' + one.name);
        remove.addEventListener('click', () => { keep('saves-' + gameKey, list.filter((_, k) => k !== index)); listSaves(isSaving); $('closeSaves').focus(); });
        item.append(open, remove);
        return item;
    }));
};
const openSaves = (isSaving, asked) => {
    if (hasStopped || saves.open) return;
    if (isSaving && isQuestion()) { note('Answer the question first.'); reveal(); return; }
    isAsked = asked;
    $('savesTitle').textContent = isSaving ? 'Save the game' : 'Restore a saved game';
    $('naming').hidden = $('toFile').hidden = $('toText').hidden = !isSaving;
    $('fromFile').hidden = isSaving;
    $('saveName').value = (outcome.room ? outcome.room + ', ' : '') + 'turn ' + outcome.turns;
    listSaves(isSaving);
    saves.showModal();
};
$('naming').addEventListener('submit', event => {
    event.preventDefault();
    const saved = { name: $('saveName').value.trim() || 'Saved game', when: new Date().toLocaleString(), game: toBase64(gameBytes()) };
    if (keep('saves-' + gameKey, [saved, ...savedGames()].slice(0, 50))) answerSave(true);
    else $('savesNote').textContent = 'This browser has no room for it: save it as a file.';
});
$('toFile').addEventListener('click', () => { download(gameBytes(), '.kelsave', 'application/octet-stream'); answerSave(true); });
$('toText').addEventListener('click', saveText);
$('fromFile').addEventListener('click', () => $('file').click());
$('file').addEventListener('change', async () => {
    const file = $('file').files[0];
    if (file) restore(file.size < 16e6 ? toBase64(new Uint8Array(await file.arrayBuffer())) : '');
    $('file').value = '';
});
const cancelSaves = () => {
    saves.close();
    if (isAsked) { isAsked = false; firstNew = null; show($('naming').hidden ? carryAndNote(['v', '']) : carryAndNote(['s', 0])); }
    focusLine();
};
$('closeSaves').addEventListener('click', cancelSaves);
saves.addEventListener('cancel', event => { event.preventDefault(); cancelSaves(); });
$('save').addEventListener('click', () => openSaves(true, false));
$('restore').addEventListener('click', () => openSaves(false, false));

/// Whatever was to come in a pause is shown before something else is done.
const finish = () => { while (isWaiting()) showQueue(); endChoices(); firstNew = null; };
$('undo').addEventListener('click', () => {
    if (hasStopped) return;
    finish();
    const next = carryAndNote(['u']);
    if (!next.refused) noteUndone(next);
    show(next);
    focusLine();
});
$('restart').addEventListener('click', () => {
    if (hasStopped) return;
    finish();
    note('The game begins again. Undo takes you back.');
    show(carryAndNote(['r']));
    focusLine();
});

// Where the reader was, or the beginning.
let isBack = false;
try { isBack = goOn(); } catch (error) { if (hasStopped) { keep('state-' + stateKey, null); throw error; } }
if (!isBack) {
    calls = [];
    clear();
    seed = crypto.getRandomValues(new Uint32Array(1))[0];
    show(call('Begin', seed));
} else showControls();
story.setAttribute('aria-live', 'polite'); // what was told before the reload is not told again
tell('');
$('form').hidden = false;
for (const id of ['save', 'restore', 'restart']) $(id).disabled = false;
window.scrollTo(0, calls.length > 0 ? document.documentElement.scrollHeight : 0);
if (!matchMedia('(pointer: coarse)').matches) line.focus({ preventScroll: true });
document.addEventListener('visibilitychange', remember);
// Time counts only while the reader sits before the prompt.
setInterval(() => {
    if (document.hidden || hasStopped || isWaiting() || saves.open || outcome.need !== 'line') return;
    const next = carryAndNote(['p', 1]);
    if (next.pieces.length > 0) show(next); else outcome = next;
}, 1000);
document.documentElement.dataset.ready = 'yes';
})();
