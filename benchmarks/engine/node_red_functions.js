// Function nodes per second in Node-RED: a chain of 50 nodes of four statements each, one message after another.
// Run in a folder where "npm install node-red" was done; prints one number.
const fs = require('fs');
const http = require('http');
const os = require('os');
const path = require('path');
const {createRequire} = require('module');

const need = createRequire(path.join(process.cwd(), 'package.json'));
const RED = need('node-red');
const nodes = 50;
const messages = 2000;
const rounds = 5;
const code = 'var x = msg.payload.x + 1; var y = x * 2; var text = String(y);'
    + ' msg.payload = {x: x, z: text.length}; return msg;';

const node = (id, func, next) => ({
    id, type: 'function', z: 'tab', name: '', func, outputs: 1, noerr: 0, initialize: '', finalize: '', libs: [],
    wires: [next],
});
const flow = [{id: 'tab', type: 'tab', label: 'tab'}, node('end', 'global.get("done")(); return null;', [])];
for (let i = 0; i < nodes; ++i)
    flow.push(node('f' + i, code, [i + 1 < nodes ? 'f' + (i + 1) : 'end']));

const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'flows-'));
fs.writeFileSync(path.join(folder, 'flows.json'), JSON.stringify(flow));
let arrived;
RED.init(http.createServer(), {
    httpAdminRoot: false, httpNodeRoot: false, userDir: folder, flowFile: 'flows.json',
    logging: {console: {level: 'error', metrics: false, audit: false}},
    functionGlobalContext: {done: () => arrived()},
});

async function measure(first) {
    const rates = [];
    for (let round = 0; round <= rounds; ++round) {
        const start = process.hrtime.bigint();
        for (let i = 0; i < messages; ++i)
            await new Promise(resolve => { arrived = resolve; first.receive({payload: {x: i}}); });
        rates.push(messages * (nodes + 1) / (Number(process.hrtime.bigint() - start) / 1e9));
    }
    rates.shift(); // warms up
    rates.sort((a, b) => a - b);
    console.log(Math.round(rates[rounds >> 1]));
    fs.rmSync(folder, {recursive: true});
    process.exit(0);
}

RED.start().then(() => {
    const look = setInterval(() => {
        const first = RED.nodes.getNode('f0');
        if (!first)
            return;
        clearInterval(look);
        measure(first);
    }, 100);
});
