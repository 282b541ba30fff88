import { readFile } from 'node:fs/promises';

const table = new URL('../../framing/answers.txt', import.meta.url);

const isComment = (line) => line.startsWith('#');

function readAnswers(lines) {
  const answers = [];
  for (const line of lines) {
    const status = /^HTTP\/\S+ (\d{3})/.exec(line);
    if (status)
      answers.push({ status: Number(status[1]), headers: [], body: '' });
    else if (line.startsWith('<'))
      answers.at(-1).body += `${line}\n`;
    else if (line !== '')
      answers.at(-1).headers.push(/^([^:]+):(.*)$/.exec(line).slice(1));
  }
  return answers;
}

/** The cases of the table: {name, verdict, answers}, answers being {status, headers: [name, value] pairs, body}. */
export async function readCases() {
  const text = await readFile(table, 'utf8');
  const lines = text.split('\n').filter((line) => !isComment(line)).join('\n');
  return lines.split(/^\[/m).slice(1).map((block) => {
    const [title, verdict, ...answers] = block.split('\n');
    return { name: title.slice(0, -1), verdict, answers: readAnswers(answers) };
  });
}
