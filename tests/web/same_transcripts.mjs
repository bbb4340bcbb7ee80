// The player in a page tells each recorded run of a game as the program does: byte for byte.
// node same_transcripts.mjs ZEM VELDT GAME...
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { gunzipSync } from 'node:zlib';

const [zem, veldt, ...games] = process.argv.slice(2);
const folder = mkdtempSync(join(tmpdir(), 'zem-web-'));
let failures = 0;
const fail = text => { failures++; console.error(text); };

const part = (page, id) => gunzipSync(Buffer.from(page.match(new RegExp(`id="${id}">([^<]*)<`))[1], 'base64'));

const open = async page => {
    const { instance } = await WebAssembly.instantiate(part(page, 'player'), {
        page: { Fault: () => { throw new Error('the player has met a fault'); } },
        wasi_snapshot_preview1: new Proxy({}, { get: () => () => 0 }),
    });
    const player = instance.exports;
    player._initialize?.();
    const put = bytes => new Uint8Array(player.memory.buffer).set(bytes, player.Space(bytes.length));
    put(part(page, 'game'));
    player.Load();
    return { player, put, result: () => Buffer.from(player.memory.buffer, player.Result(), player.Length()).toString('utf8') };
};

let lines = 0;
for (const game of games) {
    const file = join(folder, 'page.html');
    execFileSync(zem, ['publish', game, file], { stdio: ['ignore', 'ignore', 'ignore'] });
    const web = await open(readFileSync(file, 'utf8'));
    const runs = readFileSync(game + '.tests', 'utf8').split(/^run .* seed /m).slice(1);
    for (const run of runs) {
        const seed = parseInt(run, 10);
        const input = run.split('\n').filter(line => /^[><@]/.test(line)).join('\n') + '\n';
        lines += input.split('\n').length - 1;
        const inputFile = join(folder, 'lines');
        writeFileSync(inputFile, input);
        const native = execFileSync(veldt, ['--text', game, '--seed', String(seed), '--lines', inputFile], { encoding: 'utf8', stdio: ['ignore', 'pipe', 'ignore'] });
        web.put(new TextEncoder().encode(input));
        web.player.PlayLines(seed);
        const told = web.result();
        if (told !== native) {
            const at = [...native].findIndex((letter, k) => letter !== told[k]);
            fail(`${game}, seed ${seed}: differs at ${at}: ${JSON.stringify(native.slice(at, at + 60))} is ${JSON.stringify(told.slice(at, at + 60))}`);
        }
    }
}
rmSync(folder, { recursive: true });
console.log(`${games.length} games, ${lines} lines of input, ${failures} differences`);
process.exit(failures === 0 && lines > 0 ? 0 : 1);
