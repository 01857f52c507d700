// Lays a graph out with a JavaScript program and tells the user time of each layout call.
//
//   node time_layout.js elkjs|dagre GRAPH.json SAMPLES
//
// Prints "start" before and the milliseconds after every sample, the first of which is the warm-up.
// Making the program's own form of the graph is not part of a sample.
import { readFileSync } from 'node:fs';

const [peer, file, samples] = process.argv.slice(2);
const plan = JSON.parse(readFileSync(file, 'utf8'));
const isNested = plan.owners.some((owner) => owner >= 0);

async function prepareElkjs() {
    const { default: ELK } = await import('elkjs');
    const elk = new ELK();
    const options = { 'elk.algorithm': 'layered', 'elk.direction': 'RIGHT' };
    if (isNested) options['elk.hierarchyHandling'] = 'INCLUDE_CHILDREN';
    const makeGraph = () => {
        const root = { id: 'root', layoutOptions: options, children: [], edges: [] };
        const nodes = plan.owners.map((_, i) => ({ id: `n${i}` }));
        plan.owners.forEach((owner, i) => {
            const parent = owner < 0 ? root : nodes[owner];
            (parent.children ??= []).push(nodes[i]);
        });
        for (const node of nodes) {
            if (node.children === undefined) {
                Object.assign(node, { width: plan.width, height: plan.height });
            }
        }
        root.edges = plan.edges.map(([from, to], i) => ({
            id: `e${i}`,
            sources: [`n${from}`],
            targets: [`n${to}`],
        }));
        return root;
    };
    return { makeGraph, layout: (graph) => elk.layout(graph) };
}

async function prepareDagre() {
    const { default: dagre } = await import('@dagrejs/dagre');
    const makeGraph = () => {
        const graph = new dagre.graphlib.Graph({ multigraph: true, compound: isNested });
        graph.setGraph({ rankdir: 'LR' });
        plan.owners.forEach((_, i) => {
            graph.setNode(`n${i}`, { width: plan.width, height: plan.height });
        });
        plan.owners.forEach((owner, i) => {
            if (owner >= 0) graph.setParent(`n${i}`, `n${owner}`);
        });
        plan.edges.forEach(([from, to], i) => graph.setEdge(`n${from}`, `n${to}`, {}, `e${i}`));
        return graph;
    };
    return { makeGraph, layout: (graph) => dagre.layout(graph) };
}

const { makeGraph, layout } = await { elkjs: prepareElkjs, dagre: prepareDagre }[peer]();

// The mean user time of calls that together take at least so long.
async function takeSample(atLeast) {
    console.log('start');
    let total = 0;
    let calls = 0;
    do {
        const graph = makeGraph();
        const before = process.cpuUsage();
        await layout(graph);
        total += process.cpuUsage(before).user / 1000;
        ++calls;
    } while (total < atLeast);
    console.log(total / calls);
}

await takeSample(10000);
for (let i = 0; i < Number(samples); ++i) await takeSample(200);
