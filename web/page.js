'use strict';
(async () => {
const $ = id => document.getElementById(id);
const story = $('story'), line = $('line');
const print = (text, name) => { const p = document.createElement('div'); p.className = name || ''; p.textContent = text; story.append(p); };
if (typeof DecompressionStream === 'undefined' || typeof WebAssembly === 'undefined') {
    print('This browser is too old for the game: it lacks ' + (typeof WebAssembly === 'undefined' ? 'WebAssembly' : 'DecompressionStream') + '. Firefox 113, Chrome 80, Safari 16.4 and later have it.');
    return;
}
const bytesOf = id => Uint8Array.from(atob($(id).textContent), c => c.charCodeAt(0));
const unpacked = async id => new Uint8Array(await new Response(new Blob([bytesOf(id)]).stream().pipeThrough(new DecompressionStream('gzip'))).arrayBuffer());
const files = JSON.parse($('files').textContent);

// The player.
let player;
const fault = text => { print('The game has stopped: ' + text + '. This is a fault of the player program. Reload the page to go on.'); line.disabled = true; };
const memory = () => new Uint8Array(player.memory.buffer);
const stub = () => 0;
const wasm = await unpacked('player');
player = (await WebAssembly.instantiate(wasm, {
    page: { Fault: (at, length) => fault(new TextDecoder().decode(memory().slice(at, at + length))) },
    wasi_snapshot_preview1: new Proxy({}, { get: () => stub })
})).instance.exports;
if (player._initialize) player._initialize();
const put = bytes => { const at = player.Space(bytes.length); memory().set(bytes, at); };
const raw = () => memory().slice(player.Result(), player.Result() + player.Length());
const call = (name, ...values) => { try { player[name](...values); return JSON.parse(new TextDecoder().decode(raw())); } catch (error) { fault(String(error)); throw error; } };
const callWith = (name, text) => { put(new TextEncoder().encode(text)); return call(name); };
const game = await unpacked('game');
put(game);
player.Load();

// What is kept between visits. Other pages may write there, too, so nothing of it is trusted.
let key = 0xcbf29ce4;
for (const byte of game) key = Math.imul(key ^ byte, 0x01000193) >>> 0;
const place = 'kel-' + key.toString(16) + '-' + game.length;
const keep = (name, text) => { try { localStorage.setItem(place + name, text); return true; } catch { return false; } };
const kept = name => { try { return localStorage.getItem(place + name); } catch { return null; } };
const toText = bytes => { let text = ''; for (const byte of bytes) text += String.fromCharCode(byte); return btoa(text); };
const toBytes = text => { try { return Uint8Array.from(atob(text), c => c.charCodeAt(0)); } catch { return new Uint8Array(); } };

// The story.
const colours = { red: 'red', darkred: 'red', green: 'green', darkgreen: 'green', blue: 'blue', darkblue: 'blue', yellow: 'yellow', gray: 'grey', grey: 'grey' };
let state = null, block = null, music = null, history = [], at = 0;
const addSpan = piece => {
    if (!block) { block = document.createElement('div'); story.append(block); }
    const span = document.createElement('span');
    for (const name of ['bold', 'italic', 'underline']) if (piece[name]) span.classList.add(name);
    if (piece.align) span.classList.add(piece.align);
    if (piece.size) span.classList.add(piece.size < 10 ? 'small' : piece.size > 18 ? 'huge' : piece.size > 13 ? 'large' : 'plain');
    if (piece.colour && Object.hasOwn(colours, piece.colour.toLowerCase())) span.classList.add(colours[piece.colour.toLowerCase()]);
    span.textContent = piece.text;
    block.append(span);
};
const addFile = piece => {
    const data = Object.hasOwn(files, piece.text) ? files[piece.text] : null;
    if (!data) return;
    if (piece.kind === 'picture') {
        const image = document.createElement('img');
        image.src = data; image.alt = piece.text;
        story.append(image); block = null;
        return;
    }
    const sound = new Audio(data);
    if (piece.kind === 'music') { if (music) music.pause(); music = sound; sound.loop = true; }
    sound.play().catch(() => {});
};
const show = outcome => {
    block = null;
    for (const piece of outcome.pieces) {
        if (piece.kind === 'text') addSpan(piece);
        else if (piece.kind === 'clear') { story.replaceChildren(); block = null; }
        else if (piece.kind === 'silence') { if (music) music.pause(); }
        else if (piece.kind !== 'pause') addFile(piece);
    }
    while (story.textContent.length > 1e6) story.firstChild.remove();
    state = outcome;
    if (outcome.request === 'save') saveFile();
    else if (outcome.request === 'restore') $('file').click();
    else { after(); }
};
const isQuestion = () => state.need !== 'line' && state.need !== 'nothing';
const button = (text, typed) => { const made = document.createElement('button'); made.type = 'button'; made.textContent = text; made.addEventListener('click', () => enter(typed)); return made; };
const after = () => {
    $('undo').disabled = !state.undo;
    const ways = $('ways');
    ways.replaceChildren();
    if (state.need === 'line') {
        for (const way of state.exits) ways.append(button(way, way));
        for (const thing of state.things) ways.append(button(thing, 'look at ' + thing));
        for (const item of state.items) ways.append(button('(' + item + ')', 'look at ' + item));
    } else if (state.need === 'choice') state.choices.forEach((choice, k) => ways.append(button(choice, String(k + 1))));
    else if (state.need === 'yesno') ways.append(button('Yes', 'yes'), button('No', 'no'));
    else if (state.need === 'key') ways.append(button('Go on', ''));
    else if (state.need === 'nothing') { ways.append(button('Undo', 'undo'), button('Restart', 'restart')); }
    const words = ['look', 'inventory', 'wait', ...state.exits];
    for (const thing of state.things) words.push('look at ' + thing, 'take ' + thing);
    for (const item of state.items) words.push('use ' + item, 'drop ' + item);
    $('words').replaceChildren(...(isQuestion() ? [] : words).map(word => { const option = document.createElement('option'); option.value = word; return option; }));
    line.scrollIntoView({ block: 'nearest' });
    remember();
};
const remember = () => {
    if (isQuestion()) return;
    player.Save();
    keep('', toText(raw()));
    keep('story', JSON.stringify([...story.children].slice(-60).map(part => [part.className, part.textContent])));
};
const enter = typed => {
    print('> ' + typed, 'typed');
    if (isQuestion()) show(callWith('Answer', typed));
    else {
        if (typed.trim()) { history = history.filter(old => old !== typed); history.push(typed); }
        const outcome = callWith('Type', typed);
        if (outcome.refused) print('The game has ended. UNDO, RESTORE and RESTART still work.');
        show(outcome);
    }
    at = history.length;
};
$('form').addEventListener('submit', event => { event.preventDefault(); const typed = line.value; line.value = ''; enter(typed); line.focus(); });
line.addEventListener('keydown', event => {
    if (event.key !== 'ArrowUp' && event.key !== 'ArrowDown') return;
    at = Math.max(0, Math.min(history.length, at + (event.key === 'ArrowUp' ? -1 : 1)));
    line.value = history[at] || '';
    event.preventDefault();
});

// Saving, as a file; every turn is kept in the browser besides.
const saveFile = () => {
    player.Save();
    const link = document.createElement('a');
    link.href = 'data:application/octet-stream;base64,' + toText(raw());
    link.download = (document.title.replace(/[^A-Za-z0-9 -]/g, '').trim() || 'game') + '.save';
    link.click();
    show(call('Saved', 1));
};
const restoreFrom = bytes => { put(bytes); show(call('Restore')); };
$('file').addEventListener('change', async event => { const file = event.target.files[0]; event.target.value = ''; if (file && file.size < 16e6) restoreFrom(new Uint8Array(await file.arrayBuffer())); });
$('save').addEventListener('click', () => { if (isQuestion()) print('Answer the question first.'); else saveFile(); });
$('restore').addEventListener('click', () => $('file').click());
$('undo').addEventListener('click', () => { const outcome = call('Undo'); print('[Undone.]', 'typed'); show(outcome); line.focus(); });
$('restart').addEventListener('click', () => { if (confirm('Begin the game again?')) show(call('Restart')); line.focus(); });

// How it looks.
let size = Number(kept('size')) || 18;
const setSize = wanted => { size = Math.max(12, Math.min(48, wanted)); document.documentElement.style.fontSize = size + 'px'; keep('size', String(size)); };
setSize(size);
$('smaller').addEventListener('click', () => setSize(size - 2));
$('larger').addEventListener('click', () => setSize(size + 2));
const setColours = dark => { document.documentElement.classList.toggle('dark', dark); document.documentElement.classList.toggle('light', !dark); keep('dark', dark ? '1' : '0'); };
if (kept('dark') !== null) setColours(kept('dark') === '1');
$('colours').addEventListener('click', () => setColours(!(document.documentElement.classList.contains('dark') || (!document.documentElement.classList.contains('light') && matchMedia('(prefers-color-scheme: dark)').matches))));

// The beginning, or where the reader was.
const seed = crypto.getRandomValues(new Uint32Array(1))[0];
const old = kept(''), oldStory = kept('story');
const first = call('Begin', seed);
let isBack = false;
if (old) {
    put(toBytes(old));
    const back = call('Restore');
    isBack = back.undo === 1;
    if (isBack) {
        try { for (const [name, text] of JSON.parse(oldStory)) print(String(text), name === 'typed' ? 'typed' : ''); } catch { }
        back.pieces = [];
        show(back);
    }
}
if (!isBack) show(first);
setInterval(() => { if (!document.hidden && !isQuestion() && state.need === 'line') { const outcome = call('Pass', 1); if (outcome.pieces.length) show(outcome); } }, 1000);
document.documentElement.dataset.ready = '1';
line.focus();
})();
